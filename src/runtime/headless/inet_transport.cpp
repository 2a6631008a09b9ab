#include "runtime/internal/inet_transport.h"

#include <algorithm>
#include <utility>

#include "runtime/headless/world.h"
#include "runtime/inet.h"
#include "runtime/internal/http_address.h"
#include "runtime/runtime_error.h"

namespace swiftpatch {

using headless::Reply;
using headless::TheWorld;

class InetTransport::Request {
public:
    std::uint32_t number = 0;
    Reply reply;
    std::size_t sent = 0;
    bool open = true;

    /// Where it breaks or stalls; the end of the body is neither.
    bool AtStop() const { return reply.breakAfter == sent || reply.stallAfter == sent; }
    Bytes NextBlock() {
        const std::size_t end =
            std::min({reply.body.size(), reply.breakAfter.value_or(reply.body.size()),
                      reply.stallAfter.value_or(reply.body.size())});
        const std::size_t size = std::min(reply.blockSize, end - sent);
        sent += size;
        return Bytes::Of(std::string_view(reply.body).substr(sent - size, size));
    }
};

InetTransport::InetTransport(Inet& owner) : owner_(owner) {
    TheWorld().clocked.push_back([this] {
        if (request_) {
            owner_.OnClock();
        }
    });
}

InetTransport::~InetTransport() { Close(); }

void InetTransport::Open(std::uint32_t request, const HttpAddress& address,
                         const std::string& verb) {
    Reply reply = TheWorld().network.Take(verb + " " + UrlOf(address));
    if (reply.cannotStart) {
        throw RuntimeError(error_number::kRequestFailed);
    }
    request_ = std::make_shared<Request>();
    request_->number = request;
    request_->reply = std::move(reply);
    TheWorld().network.onBreak = [this, request](std::int32_t errorNumber) {
        owner_.OnFailed(request, errorNumber);
    };
    TheWorld().network.onReport = [this, request](int state) { owner_.OnState(request, state); };
    const auto post = [this, mine = request_](auto notify) {
        TheWorld().network.Post([this, mine, notify] {
            if (mine->open) {
                notify(owner_, *mine);
            }
        });
    };
    for (const int state : request_->reply.states) {
        post([state](Inet& owner, const Request& mine) { owner.OnState(mine.number, state); });
    }
    if (request_->reply.silent) {
        return;
    }
    post([](Inet& owner, const Request& mine) {
        if (mine.reply.failure != 0) {
            owner.OnFailed(mine.number, mine.reply.failure, mine.reply.fault);
        } else {
            owner.OnAnswer(mine.number, mine.reply.status, mine.reply.headers);
        }
    });
}

std::optional<Bytes> InetTransport::ReadBlock() {
    ++TheWorld().network.blocksAskedFor;
    if (request_->reply.ready && !request_->AtStop()) {
        return request_->NextBlock();
    }
    TheWorld().network.Post([this, mine = request_] {
        const Reply& reply = mine->reply;
        if (!mine->open) {
            return;
        }
        if (mine->AtStop()) {
            if (reply.breakAfter == mine->sent) {
                owner_.OnFailed(mine->number, error_number::kRequestTimedOut);
            }
            return;
        }
        owner_.OnBlock(mine->number, mine->NextBlock());
    });
    return {};
}

void InetTransport::Close() {
    if (request_) {
        request_->open = false;
        request_.reset();
        TheWorld().network.onBreak = nullptr;
        TheWorld().network.onReport = nullptr;
    }
}

}  // namespace swiftpatch
