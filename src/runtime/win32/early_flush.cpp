#include "runtime/win32/early_flush.h"

namespace swiftpatch {

void EarlyFlush::Wrote(DWORD bytes) {
    unsent_ += bytes;
    if (unsent_ >= kPiece && file_) {
        unsent_ = 0;
        Start();
        ::SetEvent(piece_.Get());
    }
}

void EarlyFlush::Start() {
    if (!piece_) {
        piece_.Reset(::CreateEventA(nullptr, FALSE, FALSE, nullptr));
    }
    if (piece_ && !thread_) {
        DWORD id = 0;  // Which Windows 95 wants to tell.
        thread_.Reset(::CreateThread(nullptr, 0, Run, this, 0, &id));
    }
}

DWORD EarlyFlush::Finish() {
    if (thread_) {
        over_ = true;
        ::SetEvent(piece_.Get());
        ::WaitForSingleObject(thread_.Get(), INFINITE);
        thread_.Reset();
    }
    file_.Reset();
    return error_;
}

DWORD WINAPI EarlyFlush::Run(void* self) {
    auto& flush = *static_cast<EarlyFlush*>(self);
    for (;;) {
        ::WaitForSingleObject(flush.piece_.Get(), INFINITE);
        if (flush.over_) {
            return 0;
        }
        if (!::FlushFileBuffers(flush.file_.Get()) && flush.error_ == ERROR_SUCCESS) {
            flush.error_ = ::GetLastError();
        }
    }
}

}  // namespace swiftpatch
