#include "e2e/http_server.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "e2e/drive_error.h"
#include "e2e/text.h"

namespace swiftpatch::e2e {
namespace {

// How long a thread rests at most before it looks whether the server ends.
constexpr int kLookMilliseconds = 50;

}  // namespace

HttpServer::HttpServer(int lastNumber)
    : lastNumber_(lastNumber), listener_(Socket::OnLoopback(lastNumber)), port_(listener_.Port()) {
    if (::listen(listener_.Get(), SOMAXCONN) != 0) {
        throw DriveError("the server cannot listen");
    }
    acceptor_ = std::thread([this] { AcceptConnections(); });
}

HttpServer::~HttpServer() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    stopped_.notify_all();
    acceptor_.join();
    for (std::thread& connection : connections_) {
        connection.join();
    }
}

void HttpServer::On(const std::string& target, Reply reply) { On("", target, std::move(reply)); }

void HttpServer::On(const std::string& method, const std::string& target, Reply reply) {
    const std::lock_guard lock(mutex_);
    rules_.push_front({method, target, false, std::move(reply)});
}

void HttpServer::Once(const std::string& method, const std::string& target, Reply reply) {
    const std::lock_guard lock(mutex_);
    const auto firstLasting =
        std::find_if(rules_.begin(), rules_.end(), [](const Rule& rule) { return !rule.once; });
    rules_.insert(firstLasting, {method, target, true, std::move(reply)});
}

void HttpServer::Otherwise(Reply reply) {
    const std::lock_guard lock(mutex_);
    otherwise_ = std::move(reply);
}

std::vector<Request> HttpServer::Requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

std::vector<std::string> HttpServer::RequestLines() const {
    std::vector<std::string> lines;
    for (const Request& request : Requests()) {
        lines.push_back(request.Line());
    }
    return lines;
}

void HttpServer::AcceptConnections() {
    while (!Stopping()) {
        if (!listener_.Readable(kLookMilliseconds)) {
            continue;
        }
        const SOCKET accepted = ::accept(listener_.Get(), nullptr, nullptr);
        if (accepted != INVALID_SOCKET) {
            const int number = static_cast<int>(connections_.size()) + 1;
            connections_.emplace_back(
                [this, accepted, number] { Serve(Socket(accepted), number); });
        }
    }
}

void HttpServer::Serve(Socket connection, int number) {
    connection.MakeNonBlocking();
    std::string rest;
    const std::optional<Rule> early = FindEarly();
    if (early && !ServeEarly(connection, number, *early)) {
        return;
    }
    while (ServeOne(connection, number, rest)) {
    }
}

std::optional<HttpServer::Rule> HttpServer::FindEarly() const {
    const std::lock_guard lock(mutex_);
    const auto found = std::find_if(rules_.begin(), rules_.end(), [this](const Rule& rule) {
        return rule.reply.early == requests_.size();
    });
    return found == rules_.end() ? std::nullopt : std::optional<Rule>(*found);
}

bool HttpServer::ServeEarly(Socket& connection, int number, const Rule& rule) {
    Reply reply = rule.reply;
    reply.afterwards = Afterwards::kKeep;
    if (!SendReply(connection, reply, rule.method != "HEAD")) {
        return false;
    }
    std::string rest;
    const std::string head = ReadRequestHead(connection, rest);
    if (!head.empty()) {
        Take(head, number);
    }
    return EndConnection(connection, rule.reply);
}

bool HttpServer::ServeOne(Socket& connection, int number, std::string& rest) {
    const std::string head = ReadRequestHead(connection, rest);
    if (head.empty()) {
        return false;
    }
    const Reply reply = Take(head, number);
    if (reply.silent) {
        while (Rest(seconds(1))) {
        }
        return false;
    }
    return Rest(reply.delay) && SendReply(connection, reply, !BeginsWith(head, "HEAD "));
}

std::string HttpServer::ReadRequestHead(const Socket& connection, std::string& rest) const {
    constexpr std::size_t kLongestHead = 65536;
    while (!Stopping() && rest.size() < kLongestHead) {
        const std::size_t end = rest.find("\r\n\r\n");
        if (end != std::string::npos) {
            const std::string head = rest.substr(0, end + 2);
            rest.erase(0, end + 4);
            return head;
        }
        if (connection.Readable(kLookMilliseconds)) {
            const std::string more = connection.Receive();
            if (more.empty()) {
                break;
            }
            rest += more;
        }
    }
    return {};
}

Reply HttpServer::Take(const std::string& head, int connection) {
    Request request;
    std::istringstream(head) >> request.method >> request.target;
    request.time = std::chrono::steady_clock::now();
    request.head = head;
    request.connection = connection;
    const std::lock_guard lock(mutex_);
    requests_.push_back(request);
    return ReplyFor(request.method, request.target);
}

Reply HttpServer::ReplyFor(const std::string& method, const std::string& target) {
    const auto found = std::find_if(rules_.begin(), rules_.end(), [&](const Rule& rule) {
        return rule.target == target && (rule.method.empty() || rule.method == method);
    });
    if (found == rules_.end()) {
        return otherwise_;
    }
    Reply reply = found->reply;
    if (found->once) {
        rules_.erase(found);
    }
    return reply;
}

bool HttpServer::SendReply(Socket& connection, const Reply& reply, bool withBody) {
    for (int i = 0; i < reply.interims; ++i) {
        if (!SendAll(connection, reply.interim + "\r\n\r\n")) {
            return false;
        }
    }
    if (reply.raw) {
        return SendAll(connection, *reply.raw) && EndConnection(connection, reply);
    }
    if (!SendHead(connection, reply) || (withBody && !SendBody(connection, reply))) {
        return false;
    }
    return EndConnection(connection, reply) && !EndsWithConnection(reply);
}

bool HttpServer::SendHead(const Socket& connection, const Reply& reply) const {
    const std::string head = HeadOf(reply);
    const std::size_t statusLine = head.find("\r\n") + 2;
    return SendAll(connection, head.substr(0, statusLine)) && Rest(reply.headersLate) &&
           SendAll(connection, head.substr(statusLine));
}

bool HttpServer::EndConnection(Socket& connection, const Reply& reply) const {
    if (reply.afterwards == Afterwards::kReset) {
        // What was sent must not be lost with the reset.
        Rest(milliseconds(reply.raw && reply.raw->empty() ? 0 : 30));
        connection.Reset();
    }
    return reply.afterwards == Afterwards::kKeep;
}

bool HttpServer::SendAll(const Socket& connection, std::string_view bytes) const {
    while (!bytes.empty()) {
        if (Stopping()) {
            return false;
        }
        if (!connection.Writable(kLookMilliseconds)) {
            continue;
        }
        const std::optional<std::size_t> sent = connection.SendSome(bytes);
        if (!sent) {
            return false;
        }
        bytes.remove_prefix(*sent);
    }
    return true;
}

bool HttpServer::SendBody(Socket& connection, const Reply& reply) {
    constexpr std::uint64_t kBlock = 65536;
    constexpr std::uint64_t kSlicesPerSecond = 25;
    const bool throttled = reply.bytesPerSecond != 0;
    const std::uint64_t slice =
        throttled ? std::max<std::uint64_t>(reply.bytesPerSecond / kSlicesPerSecond, 1) : kBlock;
    const std::uint64_t size = reply.end == BodyEnd::kWhole
                                   ? reply.body.Size()
                                   : std::min(reply.endAfter, reply.body.Size());
    for (std::uint64_t sent = 0; sent < size;) {
        const auto count = static_cast<std::size_t>(std::min(slice, size - sent));
        if (!SendAll(connection, reply.body.Read(sent, count))) {
            return false;
        }
        sent += count;
        bodyBytesSent_ += count;
        if (throttled ? !Rest(milliseconds(1000 / kSlicesPerSecond)) : Stopping()) {
            return false;
        }
    }
    if (reply.end == BodyEnd::kStall) {
        while (Rest(seconds(1))) {
        }
    } else if (reply.end == BodyEnd::kReset) {
        // What was sent must not be lost with the reset.
        Rest(milliseconds(300));
        connection.Reset();
    }
    return reply.end == BodyEnd::kWhole;
}

bool HttpServer::Rest(milliseconds time) const {
    std::unique_lock lock(mutex_);
    return !stopped_.wait_for(lock, time, [this] { return Stopping(); });
}

}  // namespace swiftpatch::e2e
