// What happens on the platform's own threads during a request.
//
// The http library calls back on whatever thread it has, in the middle of its own work and even
// after the handle has been closed. So the callback decides as little as possible: it turns a
// status into a numbered message for the transport's hidden window and returns. It calls nothing of
// the program, takes no lock, and touches nothing but its Exchange, whose few changing words are
// interlocked.
//
// The Exchange is on the heap and counts its owners: the transport lets go of it when it closes the
// request, the platform with the last callback for the handle, which may come much later. Were it a
// part of the transport, a late callback would find another request in its place, or nothing. The
// record of a read and the blocks for the body belong to it for the same reason: a read may still
// be under way.
#include "runtime/win32/inet_exchange.h"

#include <algorithm>

#include "runtime/inet.h"

namespace swiftpatch {
namespace {

/// The control's state for a status of the platform; 0 for none.
int StateOf(DWORD status) {
    switch (status) {
        case INTERNET_STATUS_RESOLVING_NAME:
            return inet_state::kResolvingHost;
        case INTERNET_STATUS_NAME_RESOLVED:
            return inet_state::kHostResolved;
        case INTERNET_STATUS_CONNECTING_TO_SERVER:
            return inet_state::kConnecting;
        case INTERNET_STATUS_CONNECTED_TO_SERVER:
            return inet_state::kConnected;
        case INTERNET_STATUS_SENDING_REQUEST:
            return inet_state::kRequesting;
        case INTERNET_STATUS_REQUEST_SENT:
            return inet_state::kRequestSent;
        case INTERNET_STATUS_RECEIVING_RESPONSE:
            return inet_state::kReceivingResponse;
        case INTERNET_STATUS_RESPONSE_RECEIVED:
            return inet_state::kResponseReceived;
        case INTERNET_STATUS_CLOSING_CONNECTION:
            return inet_state::kDisconnecting;
        case INTERNET_STATUS_CONNECTION_CLOSED:
            return inet_state::kDisconnected;
        default:
            return 0;
    }
}

void Complete(const Exchange& exchange, const INTERNET_ASYNC_RESULT& result) {
    const DWORD error = result.dwError != 0 ? result.dwError : ERROR_INTERNET_INTERNAL_ERROR;
    exchange.Post(Exchange::kCompletedMessage, result.dwResult != 0 ? ERROR_SUCCESS : error);
}

}  // namespace

void Exchange::Post(UINT message, DWORD value) const {
    // A window that is gone has nobody behind it who waits.
    ::PostMessageA(window_, message, number_, static_cast<LPARAM>(value));
}

Exchange::Block Exchange::FreeBlock() {
    const auto spare = std::find_if(blocks_.begin(), blocks_.end(),
                                    [](const Block& block) { return block.use_count() == 1; });
    if (spare != blocks_.end()) {
        return *spare;
    }
    blocks_.emplace_back(new char[kBlockSize]);
    return blocks_.back();
}

void Exchange::Release() {
    if (::InterlockedDecrement(&owners_) == 0) {
        delete this;
    }
}

void CALLBACK OnInternetStatus(HINTERNET /*handle*/, DWORD_PTR context, DWORD status, void* detail,
                               DWORD /*size*/) {
    auto* const exchange = reinterpret_cast<Exchange*>(context);
    if (exchange == nullptr) {
        return;
    }
    if (status == INTERNET_STATUS_HANDLE_CLOSING) {
        exchange->Release();
    } else if (status == INTERNET_STATUS_REQUEST_COMPLETE) {
        Complete(*exchange, *static_cast<const INTERNET_ASYNC_RESULT*>(detail));
    } else if (status == INTERNET_STATUS_DETECTING_PROXY) {
        // Takes as long as half a minute, before anything is sent.
        exchange->Post(Exchange::kWorkMessage, 0);
    } else if (StateOf(status) != 0 && !exchange->Hushed()) {
        exchange->Post(Exchange::kStateMessage, static_cast<DWORD>(StateOf(status)));
    }
}

}  // namespace swiftpatch
