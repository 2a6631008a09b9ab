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

/// The script of one answer. As it stands it is a faultless one without a body.
struct Reply {
    std::string statusLine = "HTTP/1.1 200 OK";
    Body body;
    std::optional<std::string> lastModified;
    /// What the header Content-length says, right or wrong; absent: the body's true length.
    std::optional<std::string> contentLength;
    bool omitContentLength = false;
    /// Header lines of any other kind, verbatim.
    std::vector<std::string> headers;

    milliseconds delay{0};             ///< Before the first byte of the answer.
    bool silent = false;               ///< Takes the request and never answers it.
    std::uint64_t bytesPerSecond = 0;  ///< 0: as fast as it goes.
    BodyEnd end = BodyEnd::kWhole;
    std::uint64_t endAfter = 0;
};

/// The page of a server that does not have a file.
Reply NotFound(std::size_t pageSize = 512);

/// The status line and the headers as they go out, the empty line included.
std::string HeadOf(const Reply& reply);

/// True when the end of the body can only be told by the end of the connection.
bool EndsWithConnection(const Reply& reply);

}  // namespace swiftpatch::e2e
