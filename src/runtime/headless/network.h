#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "runtime/headless/trace.h"
#include "runtime/inet.h"

namespace swiftpatch::headless {

/// How the scripted server answers one request.
struct Reply {
    std::vector<int> states = {3, 4, 5, 6, 7, 8};
    std::int32_t failure = 0;  ///< Fails with this error after the states instead of answering.
    TransferFault fault = TransferFault::kNone;  ///< What is known of the failure.
    bool silent = false;                         ///< Never answers after the states.
    bool cannotStart = false;                    ///< The request cannot even be started.
    std::int32_t status = 200;
    std::string headers;
    std::string body;
    std::size_t blockSize = 65536;
    bool ready = false;                     ///< Its blocks are there when they are asked for.
    std::optional<std::size_t> breakAfter;  ///< The connection is lost after this many bytes.
    std::optional<std::size_t> stallAfter;  ///< Nothing more comes after this many bytes.
};

/// An answer to HEAD or GET for a file.
Reply FileReply(const std::string& body, const std::string& lastModified = {});
/// An answer to HEAD with the given header lines, each ended by CR LF.
Reply HeaderReply(const std::string& headerLines);
/// An answer that sends whoever asks to another address.
Reply RedirectReply(std::int32_t status, const std::string& location);

/// The scripted server. A request that nothing was scripted for fails the test.
class Network {
public:
    explicit Network(Trace& trace) : trace_(trace) {}

    /// Answers every such request; `request` is "GET http://host/path", with the port where it is
    /// not the scheme's own.
    void Answer(const std::string& request, Reply reply);
    /// Answers the next such request only, in the order of the calls and before Answer.
    void AnswerNext(const std::string& request, Reply reply);

    /// Called as each request is made.
    std::function<void()> onRequest;

    /// Used by the transport.
    Reply Take(const std::string& request);

    /// The request under way fails with this error, or reports this state; nothing without one.
    void Break(std::int32_t errorNumber) const;
    void Report(int state) const;

    /// Notifications under way; each pump hands out one.
    void Post(std::function<void()> notification) { queue_.push_back(std::move(notification)); }
    bool DeliverOne();

    /// Every request that was made, in order.
    const std::vector<std::string>& Requests() const { return requests_; }

    /// What reaches the request under way: set by the transport while there is one.
    std::function<void(std::int32_t errorNumber)> onBreak;
    std::function<void(int state)> onReport;

    /// How many blocks of bodies the program has asked for.
    std::size_t blocksAskedFor = 0;

private:
    Trace& trace_;
    std::map<std::string, Reply> replies_;
    std::map<std::string, std::deque<Reply>> nextReplies_;
    std::deque<std::function<void()>> queue_;
    std::vector<std::string> requests_;
};

}  // namespace swiftpatch::headless
