#pragma once

#include <atomic>

#include "runtime/win32/handle.h"

namespace swiftpatch {

/// Sends a large file on to the disk while it is still being written, so that the flush at its end
/// finds little left to do. Works on a thread of its own, which ends with the object; where there
/// can be none, nothing is sent early.
class EarlyFlush {
public:
    /// At least so much is sent at a time: each flush costs a disk some milliseconds whatever its
    /// size.
    static constexpr DWORD kPiece = 8 * 1024 * 1024;

    /// `file`: another handle than the one that is written with, since the system lets only one
    /// call at a time use a handle; or none.
    explicit EarlyFlush(UniqueFile file) : file_(std::move(file)) {}
    ~EarlyFlush() { Finish(); }
    EarlyFlush(const EarlyFlush&) = delete;
    EarlyFlush& operator=(const EarlyFlush&) = delete;

    /// To be told of each write, with the number of its bytes.
    void Wrote(DWORD bytes);

    /// Ends the thread and closes the file. Returns the first error of what the thread did, or
    /// ERROR_SUCCESS; the system tells of such an error once only, so the last flush need not meet
    /// it again.
    DWORD Finish();

private:
    static DWORD WINAPI Run(void* self);
    void Start();

    UniqueFile file_;
    UniqueEvent piece_;  ///< Set when a piece has been written, and at the end.
    UniqueThread thread_;
    DWORD unsent_ = 0;
    std::atomic<bool> over_ = false;
    DWORD error_ = ERROR_SUCCESS;  ///< Of the thread, until that has ended.
};

}  // namespace swiftpatch
