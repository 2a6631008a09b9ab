#pragma once

#include "runtime/win32/win32.h"

namespace swiftpatch {

/// Some drives and their drivers know no flush; what is written to them is as safe as they make it.
inline bool IsFailedFlush(DWORD error) {
    return error != ERROR_SUCCESS && error != ERROR_INVALID_FUNCTION &&
           error != ERROR_NOT_SUPPORTED && error != ERROR_CALL_NOT_IMPLEMENTED;
}

/// Returns when all that was written through a handle is on the disk, with the error that kept it
/// from getting there, or ERROR_SUCCESS.
inline DWORD Flush(HANDLE file) {
    const DWORD error = ::FlushFileBuffers(file) ? ERROR_SUCCESS : ::GetLastError();
    return IsFailedFlush(error) ? error : ERROR_SUCCESS;
}

}  // namespace swiftpatch
