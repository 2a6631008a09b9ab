#include "runtime/win32/inet_body.h"

#include <utility>

namespace swiftpatch {
namespace {

/// A block that holds this much is handed over without a further read.
constexpr std::size_t kEnough = Exchange::kBlockSize / 2;

}  // namespace

InetBody::InetBody(HINTERNET request, Exchange& exchange)
    : request_(request), exchange_(exchange) {}

std::optional<Bytes> InetBody::ReadBlock() {
    Gather();
    if (HasBlock()) {
        return TakeBlock();
    }
    wanted_ = true;
    if (failure_ != ERROR_SUCCESS) {
        FailLater(failure_);
    }
    return {};
}

InetBody::News InetBody::OnCompleted(DWORD error) {
    if (!std::exchange(waiting_, false)) {
        return {};
    }
    failure_ = error;
    if (!wanted_) {
        return {};
    }
    Gather();
    wanted_ = !HasBlock() && failure_ == ERROR_SUCCESS;
    if (HasBlock()) {
        return {TakeBlock(), ERROR_SUCCESS};
    }
    return {std::nullopt, failure_};
}

/// Takes what has come in, until it is enough or more has yet to be announced.
void InetBody::Gather() {
    if (!block_) {
        block_ = exchange_.FreeBlock();
    }
    while (!waiting_ && !ended_ && failure_ == ERROR_SUCCESS && held_ < kEnough) {
        held_ += Read({block_.get() + held_, Exchange::kBlockSize - held_});
    }
}

/// Takes what is there without waiting. A read that has to wait takes nothing either: the platform
/// then says when to try again and leaves the buffer alone. (Asking first how much is there takes
/// twice as long, in steps of 8 KiB.)
DWORD InetBody::Read(std::span<char> target) {
    INTERNET_BUFFERSA& buffers = exchange_.ReadRecord();
    buffers = {};
    buffers.dwStructSize = sizeof(buffers);
    buffers.lpvBuffer = target.data();
    buffers.dwBufferLength = static_cast<DWORD>(target.size());
    if (WinInet().InternetReadFileExA(request_, &buffers, IRF_ASYNC | IRF_NO_WAIT,
                                      reinterpret_cast<DWORD_PTR>(&exchange_))) {
        ended_ = buffers.dwBufferLength == 0;
        return buffers.dwBufferLength;
    }
    const DWORD error = ::GetLastError();
    if (error == ERROR_IO_PENDING) {
        waiting_ = true;
    } else {
        FailLater(error);
    }
    return 0;
}

/// As if the platform had said so later: what came before goes first, and nobody who asks for a
/// block hears of its failure inside the question.
void InetBody::FailLater(DWORD error) {
    waiting_ = true;
    exchange_.Post(Exchange::kCompletedMessage, error);
}

/// Empty at the end of the body.
Bytes InetBody::TakeBlock() { return {std::exchange(block_, nullptr), std::exchange(held_, 0)}; }

}  // namespace swiftpatch
