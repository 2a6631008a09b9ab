// The life of one request, the same on every platform: its states, its time-out and its body.
//
// Everything is on the user-interface thread. The transport reports from inside pumps, never from
// inside a call to it, and each report carries the number that Open was given; so one that was on
// its way when the request was cancelled or replaced finds another number and is dropped. An Inet
// lives as long as its form, its transport as long as it, and a request until it has ended, failed
// or been replaced. StateChanged may do anything, even start the next request: after each call of
// it nothing is taken for granted.
//
// The time-out is a clock of our own, looked at by the transport's timer and in each wait for
// bytes. The platform's own time-outs differ from version to version and cannot be held while a
// question is open. Blocks are read ahead and handed out in slices, because the program asks for
// 1024 bytes at a time, and one read of the platform for each would be twenty times slower.
#include "runtime/inet.h"

#include <algorithm>
#include <utility>

#include "runtime/clock.h"
#include "runtime/events.h"
#include "runtime/internal/consent.h"
#include "runtime/internal/http_headers.h"
#include "runtime/internal/inet_transport.h"
#include "runtime/internal/redirect_chain.h"
#include "runtime/numbers.h"
#include "runtime/runtime_error.h"

namespace swiftpatch {
namespace {

constexpr std::int32_t kProxyLogonRequired = 407;  // RFC 9110 section 15.5.8.

/// One block is handed out while the other comes in.
constexpr std::size_t kBlocksAhead = 2;

}  // namespace

Inet::Inet(std::string name)
    : name_(std::move(name)), transport_(std::make_unique<InetTransport>(*this)) {}

Inet::~Inet() = default;

void Inet::ResetRequest() {
    headers_.clear();
    responseCode_ = 0;
    fault_ = TransferFault::kNone;
}

void Inet::Execute(const std::string& url, const std::string& verb) {
    if (!MayRequest(url, verb)) {
        End();
    }
    if (executing_) {
        throw RuntimeError(error_number::kStillExecuting);
    }
    CloseRequest();
    ResetRequest();
    if (verb == "QUIT") {
        return;
    }
    chain_ = std::make_unique<RedirectChain>(ParseHttpAddress(url));
    verb_ = verb;
    Open();
    executing_ = true;
}

void Inet::Open() {
    ++request_;
    transport_->Open(request_, chain_->Address(), verb_);
    open_ = true;
    attempt_ = 0;
    Touch();
}

std::string Inet::Address() const { return chain_ ? UrlOf(chain_->Address()) : ""; }

bool Inet::Redirected() const { return chain_ && chain_->Length() != 0; }

std::string Inet::GetHeader(const std::string& name) const { return HeaderValue(headers_, name); }

Bytes Inet::GetChunk(std::size_t size) {
    const std::uint32_t mine = request_;
    while (body_ && mine == request_ && held_ < size && !ended_ && failure_ == 0) {
        // Where the blocks are small, more of them are needed than are read ahead.
        AskForBlock();
        if (reading_) {
            DoEventsWaiting();
            OnClock();
        }
    }
    if (!body_ || mine != request_) {
        throw RuntimeError(error_number::kRequestFailed);
    }
    if (held_ == 0 && failure_ != 0) {
        throw RuntimeError(failure_);
    }
    return TakeBytes(std::min(size, held_));
}

Bytes Inet::TakeBytes(std::size_t count) {
    Bytes bytes = TakePart(count);
    if (bytes.size() < count) {
        std::string joined(bytes.View());
        while (joined.size() < count) {
            joined += TakePart(count - joined.size()).View();
        }
        bytes = Bytes::Of(joined);
    }
    held_ -= count;
    ReadAhead();
    return bytes;
}

/// Bytes of the first block only.
Bytes Inet::TakePart(std::size_t most) {
    if (most == 0) {
        return {};
    }
    Bytes part = blocks_.front().TakeFront(most);
    if (blocks_.front().empty()) {
        blocks_.pop_front();
    }
    return part;
}

void Inet::Cancel() {
    executing_ = false;
    CloseRequest();
}

void Inet::OnState(std::uint32_t request, int state) {
    if (!IsPresent(request) || !executing_) {
        return;
    }
    if (IsProgress(state)) {
        Touch();
    }
    Notify(state);
}

/// Some platforms try several times to reach a server, and report each of the attempts. All of them
/// together have one time-out.
bool Inet::IsProgress(int state) {
    const bool reached = state >= inet_state::kConnected && state <= inet_state::kResponseReceived;
    const bool further = state > attempt_;
    attempt_ = reached ? 0 : std::max(attempt_, state);
    return reached || further;
}

void Inet::OnWork(std::uint32_t request) {
    if (IsPresent(request) && executing_) {
        Touch();
    }
}

void Inet::OnAnswer(std::uint32_t request, std::int32_t status, std::string headers) {
    if (!IsPresent(request) || !executing_) {
        return;
    }
    if (Follow(status, headers)) {
        return;
    }
    executing_ = false;  // From here on a failure is one of the body, and no longer state 11.
    headers_ = std::move(headers);
    responseCode_ = status;
    if (status == kProxyLogonRequired) {
        fault_ = TransferFault::kProxyLogon;
    }
    if (verb_ == "GET") {
        body_ = true;
        ReadAhead();
    } else {
        CloseRequest();
    }
    Finish(inet_state::kResponseCompleted);
}

/// True for an answer that is a redirect: the request has gone on to the other address, or failed.
bool Inet::Follow(std::int32_t status, const std::string& headers) {
    try {
        const bool follow = chain_->Follow(status, headers);
        if (follow) {
            Open();
        }
        return follow;
    } catch (const RuntimeError& error) {
        fault_ = chain_->Fault();
        FailWith(error.Number());
        return true;
    }
}

void Inet::OnBlock(std::uint32_t request, Bytes block) {
    if (!IsPresent(request) || !body_) {
        return;
    }
    Accept(std::move(block));
    ReadAhead();
}

void Inet::Accept(Bytes block) {
    reading_ = false;
    if (block.empty()) {
        EndBody();
        return;
    }
    held_ += block.size();
    came_ += block.size();
    blocks_.push_back(std::move(block));
}

/// The system takes an orderly close for the end of a body, whatever length the answer promised
/// (RFC 9112 section 8: such an answer is incomplete); here that is a lost connection.
void Inet::EndBody() {
    const std::string length = GetHeader("Content-Length");
    const bool counted = IsNumeric(length) && GetHeader("Transfer-Encoding").empty();
    if (counted && static_cast<double>(came_) < ToDouble(length)) {
        FailWith(error_number::kRequestTimedOut);
        return;
    }
    ended_ = true;
    CloseTransport();
}

void Inet::OnFailed(std::uint32_t request, std::int32_t errorNumber, TransferFault fault) {
    if (IsPresent(request)) {
        fault_ = fault;
        FailWith(errorNumber);
    }
}

void Inet::OnClock() {
    if (EventsAreHeld()) {
        Touch();
        return;
    }
    const bool waiting = executing_ || (body_ && reading_);
    if (open_ && waiting && TimedOut()) {
        FailWith(error_number::kRequestTimedOut);
    }
}

void Inet::Touch() { lastSign_ = TickCount(); }

bool Inet::TimedOut() const {
    const std::uint32_t silence = TickCount() - lastSign_;
    return silence / 1000 >= static_cast<std::uint32_t>(RequestTimeout);
}

void Inet::Finish(int state) {
    executing_ = false;
    Notify(state);
}

void Inet::Notify(int state) {
    // An event procedure like any other: whatever happens to be pumping must not trap its errors.
    if (StateChanged) {
        RaiseEvent([this, state] { StateChanged(state); });
    }
}

void Inet::FailWith(std::int32_t errorNumber) {
    if (executing_) {
        CloseRequest();
        responseCode_ = errorNumber;
        Finish(inet_state::kError);
        return;
    }
    // What came in before is handed out first; the failure comes after it.
    failure_ = error_number::kRequestTimedOut;
    CloseTransport();
}

void Inet::ReadAhead() {
    while (open_ && !reading_ && blocks_.size() < kBlocksAhead) {
        AskForBlock();
    }
}

void Inet::AskForBlock() {
    if (!open_ || reading_) {
        return;
    }
    reading_ = true;
    Touch();
    if (std::optional<Bytes> block = transport_->ReadBlock()) {
        Accept(*std::move(block));
    }
}

void Inet::CloseTransport() {
    reading_ = false;
    if (std::exchange(open_, false)) {
        transport_->Close();
    }
}

void Inet::CloseRequest() {
    CloseTransport();
    body_ = false;
    ended_ = false;
    failure_ = 0;
    blocks_.clear();
    held_ = 0;
    came_ = 0;
}

}  // namespace swiftpatch
