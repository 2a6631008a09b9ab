#include "unattended/exit_status.h"

#include <algorithm>
#include <array>

#include "runtime/runtime_error.h"
#include "shared/branding.h"

namespace swiftpatch {
namespace {

struct StatusRow {
    ExitStatus status;
    const char* name;
    const char* text;
};

constexpr std::array kStatuses{
    StatusRow{ExitStatus::kNothingToDo, "nothing-to-do", "There is nothing to do."},
    StatusRow{ExitStatus::kInstalled, "installed", "The build was installed."},
    StatusRow{ExitStatus::kReady, "ready", "An update is ready to be installed."},
    StatusRow{ExitStatus::kNoConnection, "no-connection",
              "There is no connection to the update server."},
    StatusRow{ExitStatus::kBadServer, "bad-server",
              "The update server answers, but what it offers cannot be used."},
    StatusRow{ExitStatus::kTimedOut, "timed-out", "The update server takes too long."},
    StatusRow{ExitStatus::kProgramRunning, "program-running",
              SWIFTPATCH_RUNNING_NAME " is running, so nothing was installed."},
    StatusRow{ExitStatus::kProgramNotClosed, "program-not-closed",
              SWIFTPATCH_RUNNING_NAME " was asked to close and did not."},
    StatusRow{ExitStatus::kNotSigned, "not-signed",
              "The update is not signed as it has to be. Nothing was installed."},
    StatusRow{ExitStatus::kDisk, "disk",
              "A file could not be written or replaced, or " SWIFTPATCH_PROGRAM " is missing."},
    StatusRow{ExitStatus::kOtherUpdater, "other-updater", "Another updater is running."},
    StatusRow{ExitStatus::kUsage, "usage", "The command line cannot be understood."},
    StatusRow{ExitStatus::kInternal, "internal", "The run ended in a way that it should not."},
};

const StatusRow& RowOf(ExitStatus status) {
    const auto* const row =
        std::find_if(kStatuses.begin(), kStatuses.end(),
                     [status](const StatusRow& each) { return each.status == status; });
    return row == kStatuses.end() ? kStatuses.back() : *row;
}

struct ErrorRow {
    std::int32_t first;
    std::int32_t last;
    ExitStatus status;
};

/// What is read from the server and cannot be is a mistake of its own; what the disk refuses is a
/// file's. Any other number is one that nobody has thought of.
constexpr std::array kErrors{
    ErrorRow{error_number::kInvalidProcedureCall, error_number::kOverflow, ExitStatus::kBadServer},
    ErrorRow{error_number::kSubscriptOutOfRange, error_number::kTypeMismatch,
             ExitStatus::kBadServer},
    ErrorRow{error_number::kBadFileNameOrNumber, error_number::kPathNotFound, ExitStatus::kDisk},
    ErrorRow{error_number::kMalformedUrl, error_number::kMalformedUrl, ExitStatus::kBadServer},
    ErrorRow{error_number::kNoConnection, error_number::kNoConnection, ExitStatus::kNoConnection},
    ErrorRow{error_number::kRequestFailed, error_number::kRequestFailed, ExitStatus::kBadServer},
    ErrorRow{error_number::kRequestTimedOut, error_number::kRequestTimedOut, ExitStatus::kTimedOut},
};

}  // namespace

const char* NameOf(ExitStatus status) { return RowOf(status).name; }

const char* TextOf(ExitStatus status) { return RowOf(status).text; }

ExitStatus StatusOfError(std::int32_t number) {
    const auto* const row = std::find_if(
        kErrors.begin(), kErrors.end(),
        [number](const ErrorRow& each) { return number >= each.first && number <= each.last; });
    return row == kErrors.end() ? ExitStatus::kInternal : row->status;
}

}  // namespace swiftpatch
