#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "e2e/body.h"
#include "e2e/wait.h"

namespace swiftpatch::e2e {

/// How the server deals with the body of an answer after `Reply::endAfter` bytes of it.
enum class BodyEnd {
    kWhole,  ///< Sends all of it.
    kStall,  ///< Sends nothing more and keeps the connection.
    kReset,  ///< Resets the connection.
    kClose,  ///< Closes the connection in an orderly way.
};

/// What the server does with the connection after a whole answer.
enum class Afterwards {
    kKeep,   ///< Waits for the next request.
    kClose,  ///< Closes it without having said so.
    kReset,  ///< Resets it.
};

/// The script of one answer. As it stands it is a faultless one without a body.
struct Reply {
    std::string statusLine = "HTTP/1.1 200 OK";
    Body body;
    std::optional<std::string> lastModified;
    /// What the header Content-length says, right or wrong; absent: the body's true length.
    std::optional<std::string> contentLength;
    bool omitContentLength = false;
    bool chunked = false;  ///< The body is one of chunks, see SendInChunks.
    /// Header lines of any other kind, verbatim.
    std::vector<std::string> headers;
    /// The whole answer, verbatim; none of the above is sent.
    std::optional<std::string> raw;

    /// The status line of the answers that come before this one, and how many they are.
    std::string interim;
    int interims = 0;

    milliseconds delay{0};        ///< Before the first byte of the answer.
    milliseconds headersLate{0};  ///< Between the status line and the headers.
    /// Comes before its request, as soon as a connection is made after so many requests.
    std::optional<std::size_t> early;
    bool silent = false;               ///< Takes the request and never answers it.
    std::uint64_t bytesPerSecond = 0;  ///< 0: as fast as it goes.
    BodyEnd end = BodyEnd::kWhole;
    std::uint64_t endAfter = 0;
    Afterwards afterwards = Afterwards::kKeep;
};

/// Turns the body into one that comes in chunks of `size` bytes, without a length. What counts the
/// body's bytes counts those of the chunks.
void SendInChunks(Reply& reply, std::size_t size);

/// The page of a server that does not have a file.
Reply NotFound(std::size_t pageSize = 512);

/// The status line and the headers as they go out, the empty line included.
std::string HeadOf(const Reply& reply);

/// True when the end of the body can only be told by the end of the connection.
bool EndsWithConnection(const Reply& reply);

}  // namespace swiftpatch::e2e
