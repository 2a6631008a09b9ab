#include "runtime/headless/network.h"

#include "runtime/headless/misuse.h"
#include "runtime/runtime_error.h"

namespace swiftpatch::headless {

Reply FileReply(const std::string& body, const std::string& lastModified) {
    Reply reply;
    reply.headers = "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n";
    if (!lastModified.empty()) {
        reply.headers += "Last-Modified: " + lastModified + "\r\n";
    }
    reply.body = body;
    return reply;
}

Reply HeaderReply(const std::string& headerLines) {
    Reply reply;
    reply.headers = "HTTP/1.1 200 OK\r\n" + headerLines;
    return reply;
}

Reply RedirectReply(std::int32_t status, const std::string& location) {
    Reply reply;
    reply.status = status;
    reply.headers = "HTTP/1.1 " + std::to_string(status) + " Elsewhere\r\nLocation: " + location +
                    "\r\nContent-Length: 0\r\n";
    return reply;
}

void Network::Answer(const std::string& request, Reply reply) {
    replies_[request] = std::move(reply);
}

void Network::AnswerNext(const std::string& request, Reply reply) {
    nextReplies_[request].push_back(std::move(reply));
}

Reply Network::Take(const std::string& request) {
    trace_.Add("Request " + request);
    requests_.push_back(request);
    if (onRequest) {
        onRequest();
    }
    if (auto& next = nextReplies_[request]; !next.empty()) {
        Reply reply = std::move(next.front());
        next.pop_front();
        return reply;
    }
    if (const auto found = replies_.find(request); found != replies_.end()) {
        return found->second;
    }
    ReportMisuse("unscripted request: " + request);
    Reply reply;
    reply.failure = error_number::kNoConnection;
    return reply;
}

void Network::Break(std::int32_t errorNumber) const {
    if (const auto action = onBreak) {
        action(errorNumber);
    }
}

void Network::Report(int state) const {
    if (const auto action = onReport) {
        action(state);
    }
}

bool Network::DeliverOne() {
    if (queue_.empty()) {
        return false;
    }
    const std::function<void()> notification = std::move(queue_.front());
    queue_.pop_front();
    notification();
    return true;
}

}  // namespace swiftpatch::headless
