#include "runtime/inet.h"

#include <algorithm>
#include <utility>

#include "runtime/clock.h"
#include "runtime/events.h"
#include "runtime/http_headers.h"
#include "runtime/inet_transport.h"
#include "runtime/runtime_error.h"

namespace swiftpatch {
namespace {

/// One block is handed out while the other comes in.
constexpr std::size_t kBlocksAhead = 2;

}  // namespace

Inet::Inet(std::string name)
    : name_(std::move(name)), transport_(std::make_unique<InetTransport>(*this)) {}

Inet::~Inet() = default;

void Inet::ResetRequest() {
    headers_.clear();
    responseCode_ = 0;
}

void Inet::Execute(const std::string& url, const std::string& verb) {
    if (executing_) {
        throw RuntimeError(error_number::kStillExecuting);
    }
    CloseRequest();
    ResetRequest();
    if (verb == "QUIT") {
        return;
    }
    const HttpAddress address = ParseHttpAddress(url);
    ++request_;
    transport_->Open(request_, address, verb);
    open_ = true;
    executing_ = true;
    expectsBody_ = verb == "GET";
    Touch();
}

std::string Inet::GetHeader(const std::string& name) const { return HeaderValue(headers_, name); }

std::string Inet::GetChunk(std::size_t size) {
    const std::uint32_t mine = request_;
    while (body_ && mine == request_ && held_ < size && !ended_ && failure_ == 0) {
        DoEventsResting();
        OnClock();
    }
    if (!body_ || mine != request_) {
        throw RuntimeError(error_number::kRequestFailed);
    }
    if (held_ == 0 && failure_ != 0) {
        throw RuntimeError(std::exchange(failure_, 0));
    }
    return TakeBytes(std::min(size, held_));
}

std::string Inet::TakeBytes(std::size_t count) {
    std::string bytes;
    bytes.reserve(count);
    while (bytes.size() < count) {
        const std::string& block = blocks_.front();
        const std::size_t part = std::min(count - bytes.size(), block.size() - taken_);
        bytes.append(block, taken_, part);
        taken_ += part;
        if (taken_ == block.size()) {
            blocks_.pop_front();
            taken_ = 0;
        }
    }
    held_ -= count;
    ReadAhead();
    return bytes;
}

void Inet::Cancel() {
    executing_ = false;
    CloseRequest();
}

void Inet::OnState(std::uint32_t request, int state) {
    if (!IsPresent(request) || !executing_) {
        return;
    }
    Touch();
    if (StateChanged) {
        StateChanged(state);
    }
}

void Inet::OnAnswer(std::uint32_t request, std::int32_t status, std::string headers) {
    if (!IsPresent(request) || !executing_) {
        return;
    }
    headers_ = std::move(headers);
    responseCode_ = status;
    if (expectsBody_) {
        body_ = true;
        ReadAhead();
    } else {
        CloseRequest();
    }
    Finish(inet_state::kResponseCompleted);
}

void Inet::OnBlock(std::uint32_t request, std::string block) {
    if (!IsPresent(request) || !body_) {
        return;
    }
    reading_ = false;
    if (block.empty()) {
        ended_ = true;
        CloseTransport();
        return;
    }
    held_ += block.size();
    blocks_.push_back(std::move(block));
    ReadAhead();
}

void Inet::OnFailed(std::uint32_t request, std::int32_t errorNumber) {
    if (IsPresent(request)) {
        FailWith(errorNumber);
    }
}

void Inet::OnClock() {
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
    if (StateChanged) {
        StateChanged(state);
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
    if (!open_ || reading_ || blocks_.size() >= kBlocksAhead) {
        return;
    }
    reading_ = true;
    Touch();
    transport_->ReadBlock();
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
    taken_ = 0;
}

}  // namespace swiftpatch
