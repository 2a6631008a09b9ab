#pragma once

#include "runtime/internal/unfinished_copy.h"
#include "runtime/win32/win32.h"

namespace swiftpatch {

/// Errors of a file that another process holds. A file that is about to go, and one that is open
/// without a word on deleting, refuse access.
inline bool IsHeld(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
           error == ERROR_ACCESS_DENIED || error == ERROR_USER_MAPPED_FILE;
}

/// Tries a call of the system again and again while another process holds the file. `attempt` gives
/// an error of the system's; so does this, the last one.
template <class Attempt>
DWORD WaitOutHold(Attempt attempt) {
    constexpr DWORD kPause = 20;  // Milliseconds.
    const DWORD start = ::GetTickCount();
    for (;;) {
        const DWORD error = attempt();
        if (!IsHeld(error) || ::GetTickCount() - start >= DWORD{kLongestHold}) {
            return error;
        }
        ::Sleep(kPause);
    }
}

/// The error of a call of the system that has just been made.
inline DWORD ErrorOf(BOOL done) { return done ? ERROR_SUCCESS : ::GetLastError(); }

}  // namespace swiftpatch
