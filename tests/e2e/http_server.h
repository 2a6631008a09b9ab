#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "e2e/reply.h"
#include "e2e/socket.h"
#include "e2e/wait.h"

namespace swiftpatch::e2e {

/// What the server saw of one request.
struct Request {
    SteadyTime time;
    std::string method;
    std::string target;  ///< As it stands in the request: a path, or a whole address.
    std::string head;    ///< The request as it came, up to the empty line.
    int connection = 0;  ///< The number of its connection, from 1 on.

    /// "GET /folder/file"
    std::string Line() const { return method + " " + target; }
};

/// An HTTP/1.1 server on a free port of the loopback address that answers as it was told to and
/// remembers what it was asked. What it was told nothing about is "404 Not Found". It ends, with
/// all of its connections, when it is destroyed.
class HttpServer {
public:
    /// Listens at 127.0.0.N.
    explicit HttpServer(int lastNumber = 1);
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    std::uint16_t Port() const { return port_; }
    /// "127.0.0.1:port"
    std::string Host() const {
        return "127.0.0." + std::to_string(lastNumber_) + ":" + std::to_string(port_);
    }

    /// Answers every request for a path, or only those of one method. The answer told last counts.
    void On(const std::string& target, Reply reply);
    void On(const std::string& method, const std::string& target, Reply reply);
    /// Answers the next request of this kind only; several of them are used in their order.
    void Once(const std::string& method, const std::string& target, Reply reply);
    /// Answers whatever nothing else was told about.
    void Otherwise(Reply reply);

    std::vector<Request> Requests() const;
    /// The requests as lines, "HEAD /folder/file".
    std::vector<std::string> RequestLines() const;
    /// Bytes of bodies sent up to now.
    std::uint64_t BodyBytesSent() const { return bodyBytesSent_; }

private:
    struct Rule {
        std::string method;  ///< Empty: any.
        std::string target;
        bool once;
        Reply reply;
    };

    void AcceptConnections();
    void Serve(Socket connection, int number);
    /// Sends the rule's answer and then reads its request. False when the connection is over.
    bool ServeEarly(Socket& connection, int number, const Rule& rule);
    /// False when the connection is over.
    bool ServeOne(Socket& connection, int number, std::string& rest);
    /// The rule whose answer is to be sent now, before the request that it belongs to.
    std::optional<Rule> FindEarly() const;
    std::string ReadRequestHead(const Socket& connection, std::string& rest) const;
    Reply Take(const std::string& head, int connection);
    Reply ReplyFor(const std::string& method, const std::string& target);
    /// False when the connection is over.
    bool SendReply(Socket& connection, const Reply& reply, bool withBody);
    bool SendHead(const Socket& connection, const Reply& reply) const;
    bool SendAll(const Socket& connection, std::string_view bytes) const;
    bool SendBody(Socket& connection, const Reply& reply);
    bool EndConnection(Socket& connection, const Reply& reply) const;
    /// False when the server ends meanwhile.
    bool Rest(milliseconds time) const;
    bool Stopping() const { return stopping_; }

    SocketLibrary library_;
    int lastNumber_;
    Socket listener_;
    std::uint16_t port_;
    mutable std::mutex mutex_;
    mutable std::condition_variable stopped_;
    std::atomic<bool> stopping_{false};
    std::atomic<std::uint64_t> bodyBytesSent_{0};
    std::list<Rule> rules_;
    Reply otherwise_ = NotFound();
    std::vector<Request> requests_;
    std::vector<std::thread> connections_;
    std::thread acceptor_;
};

/// A port of the loopback address at which nobody listens, kept as long as this lives.
class DeadPort {
public:
    DeadPort() : socket_(Socket::OnLoopback()) {}
    std::string Host() const { return "127.0.0.1:" + std::to_string(socket_.Port()); }

private:
    SocketLibrary library_;
    Socket socket_;
};

}  // namespace swiftpatch::e2e
