#include "runtime/win32/errors.h"

#include <algorithm>
#include <array>

#include "runtime/runtime_error.h"

namespace swiftpatch {
namespace {

namespace number = error_number;

// Of the system's own headers for newer systems.
constexpr DWORD kVirusInfected = 225;
constexpr DWORD kVirusDeleted = 226;
constexpr DWORD kDiskQuotaExceeded = 1295;

/// What each system error is to a program: while opening, while deleting, while copying.
struct FileErrorRow {
    DWORD systemError;
    std::int32_t opening;
    std::int32_t deleting;
    std::int32_t copying;
};

constexpr FileErrorRow Same(DWORD systemError, std::int32_t all) {
    return {systemError, all, all, all};
}

/// What another process holds can be neither opened nor overwritten; a program that is to be
/// deleted is probably running.
constexpr FileErrorRow Held(DWORD systemError) {
    return {systemError, number::kPermissionDenied, number::kPathFileAccess,
            number::kPermissionDenied};
}

/// Copying over a file that may not be touched has a number of its own.
constexpr FileErrorRow Refused(DWORD systemError) {
    return {systemError, number::kPathFileAccess, number::kPathFileAccess,
            number::kPermissionDenied};
}

constexpr std::array kFileErrors{
    Same(ERROR_FILE_NOT_FOUND, number::kFileNotFound),
    Same(ERROR_PATH_NOT_FOUND, number::kPathNotFound),
    Same(ERROR_INVALID_DRIVE, number::kPathNotFound),
    Same(ERROR_BAD_PATHNAME, number::kPathNotFound),
    Same(ERROR_BAD_NETPATH, number::kPathNotFound),
    Same(ERROR_BAD_NET_NAME, number::kPathNotFound),
    Same(ERROR_FILENAME_EXCED_RANGE, number::kPathNotFound),
    Same(ERROR_INVALID_NAME, number::kBadFileNameOrNumber),
    Same(ERROR_TOO_MANY_OPEN_FILES, number::kTooManyFiles),
    Refused(ERROR_ACCESS_DENIED),
    Refused(ERROR_ALREADY_EXISTS),
    Refused(ERROR_WRITE_PROTECT),
    Held(ERROR_SHARING_VIOLATION),
    Held(ERROR_LOCK_VIOLATION),
    Held(ERROR_USER_MAPPED_FILE),  // A program that runs from the file.
    Same(kVirusInfected, number::kPermissionDenied),
    Same(kVirusDeleted, number::kPermissionDenied),
    Same(ERROR_NOT_READY, number::kDiskNotReady),
    Same(ERROR_DISK_FULL, number::kDiskFull),
    Same(ERROR_HANDLE_DISK_FULL, number::kDiskFull),
    Same(ERROR_CANNOT_MAKE, number::kDiskFull),  // A directory that has no room for one name more.
    Same(kDiskQuotaExceeded, number::kDiskFull),
};

constexpr DWORD kNoRevocationServer = 12057;  // ERROR_INTERNET_SEC_CERT_REV_FAILED
constexpr DWORD kCertificateErrors = 12055;   // ERROR_INTERNET_SEC_CERT_ERRORS

struct TransferErrorRow {
    DWORD systemError;
    std::int32_t beforeAnswer;
    TransferFault fault = TransferFault::kNone;
};

/// A certificate that is not trusted counts as no connection.
constexpr TransferErrorRow Untrusted(DWORD systemError, TransferFault fault) {
    return {systemError, number::kNoConnection, fault};
}

constexpr std::array kTransferErrors{
    TransferErrorRow{ERROR_INTERNET_NAME_NOT_RESOLVED, number::kNoConnection},
    TransferErrorRow{ERROR_INTERNET_CANNOT_CONNECT, number::kNoConnection},
    TransferErrorRow{ERROR_INTERNET_DISCONNECTED, number::kNoConnection},
    TransferErrorRow{ERROR_INTERNET_SERVER_UNREACHABLE, number::kNoConnection},
    TransferErrorRow{ERROR_INTERNET_PROXY_SERVER_UNREACHABLE, number::kNoConnection},
    TransferErrorRow{ERROR_INTERNET_TIMEOUT, number::kRequestTimedOut},
    Untrusted(ERROR_INTERNET_SEC_CERT_DATE_INVALID, TransferFault::kCertificateExpired),
    Untrusted(ERROR_INTERNET_SEC_CERT_CN_INVALID, TransferFault::kCertificateName),
    Untrusted(ERROR_INTERNET_INVALID_CA, TransferFault::kCertificateAuthority),
    Untrusted(ERROR_INTERNET_SEC_CERT_REVOKED, TransferFault::kCertificateRevoked),
    Untrusted(kNoRevocationServer, TransferFault::kCertificateUnchecked),
    Untrusted(ERROR_INTERNET_SEC_INVALID_CERT, TransferFault::kCertificateInvalid),
    Untrusted(kCertificateErrors, TransferFault::kCertificateInvalid),
    Untrusted(ERROR_INTERNET_SECURITY_CHANNEL_ERROR, TransferFault::kSecureChannel),
    Untrusted(ERROR_INTERNET_CLIENT_AUTH_CERT_NEEDED, TransferFault::kSecureChannel),
};

/// Null for an error that no row is about.
template <class Rows>
const typename Rows::value_type* RowOf(const Rows& rows, DWORD systemError) {
    const auto row = std::find_if(rows.begin(), rows.end(), [systemError](const auto& each) {
        return each.systemError == systemError;
    });
    return row == rows.end() ? nullptr : &*row;
}

TransferErrorRow TransferErrorOf(DWORD systemError) {
    const auto* const row = RowOf(kTransferErrors, systemError);
    return row == nullptr ? TransferErrorRow{systemError, number::kRequestFailed} : *row;
}

}  // namespace

void RaiseFileError(DWORD systemError, FileAction action) {
    const auto* const row = RowOf(kFileErrors, systemError);
    if (row == nullptr) {
        throw RuntimeError(number::kDeviceIoError);
    }
    switch (action) {
        case FileAction::kDelete:
            throw RuntimeError(row->deleting);
        case FileAction::kCopy:
            throw RuntimeError(row->copying);
        default:
            throw RuntimeError(row->opening);
    }
}

std::int32_t TransferErrorNumber(DWORD systemError, bool inBody) {
    return inBody ? number::kRequestTimedOut : TransferErrorOf(systemError).beforeAnswer;
}

TransferFault TransferFaultOf(DWORD systemError) { return TransferErrorOf(systemError).fault; }

}  // namespace swiftpatch
