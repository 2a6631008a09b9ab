#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "runtime/bytes.h"
#include "runtime/win32/inet_exchange.h"

namespace swiftpatch {

/// The reading of one answer's body in blocks, on the user-interface thread and without waiting: a
/// read takes what has come in, or nothing, and then the platform says through the exchange when to
/// try again. (Reading on until a block is full would hold back what trickles in.)
///
/// The platform puts the bytes into memory of the exchange, which outlives the body where a read is
/// still under way when the request is closed.
class InetBody {
public:
    /// Of an answer whose headers have come in.
    InetBody(HINTERNET request, Exchange& exchange);

    /// The next block where it has come in already, empty at the end of the body. Otherwise it is
    /// wanted from now on, and what OnCompleted returns answers.
    std::optional<Bytes> ReadBlock();

    /// What there is for the one who wants a block; often nothing yet.
    struct News {
        std::optional<Bytes> block;
        DWORD failure = ERROR_SUCCESS;
    };
    /// To be told of each completion that the exchange posts.
    News OnCompleted(DWORD error);

    bool AtEnd() const { return ended_; }

private:
    void Gather();
    DWORD Read(std::span<char> target);
    void FailLater(DWORD error);
    bool HasBlock() const { return ended_ || held_ != 0; }
    Bytes TakeBlock();

    const HINTERNET request_;
    Exchange& exchange_;
    Exchange::Block block_;
    std::size_t held_ = 0;  ///< Bytes in the block.
    bool waiting_ = false;  ///< For a completion.
    bool wanted_ = false;   ///< A block has been asked for, and was not there.
    bool ended_ = false;
    DWORD failure_ = ERROR_SUCCESS;  ///< Of a read that nobody waited for.
};

}  // namespace swiftpatch
