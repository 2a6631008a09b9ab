#pragma once

#include <cstdint>

namespace swiftpatch {

/// How a run ends. The numbers are for scripts and never change.
enum class ExitStatus {
    kNothingToDo = 0,
    kInstalled = 10,
    kReady = 11,  ///< Only of a check.
    kNoConnection = 20,
    kBadServer = 21,
    kTimedOut = 22,
    kProgramRunning = 30,
    kProgramNotClosed = 31,
    kNotSigned = 40,
    kDisk = 50,
    kOtherUpdater = 60,
    kUsage = 64,     // EX_USAGE
    kInternal = 70,  // EX_SOFTWARE
};

/// The word for machines.
const char* NameOf(ExitStatus status);
/// The sentence for people.
const char* TextOf(ExitStatus status);

/// What a run comes to that is ended by a run-time error of this number.
ExitStatus StatusOfError(std::int32_t number);

}  // namespace swiftpatch
