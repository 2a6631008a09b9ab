#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace publish_check {

/// What came back to one request.
struct Answer {
    bool answered = false;
    std::string problem;  ///< Why no answer came, or not all of its body; empty when all did.
    int status = 0;
    std::string headers;  ///< Status line and fields, each ended by CR LF.
    std::string body;     ///< Of an answer to GET, as far as it came.
    std::string address;  ///< Where it came from in the end, after redirects.
    bool redirected = false;
    /// Until the certificate of an https server ends.
    std::optional<std::int64_t> certificateDays;
    bool bodyToHead = false;  ///< The answer to HEAD had a body, which is not kept.
    bool closed = false;      ///< The body ended with its connection, before it was all there.
};

/// A file of the server folder, as HEAD and GET show it.
struct PublishedFile {
    Answer head;
    Answer get;
    /// A file of the folder whose name differs in upper and lower case only; empty for none.
    std::string nearlyNamed;
};

/// A server folder, as an updater sees it.
struct ServerState {
    std::string address;  ///< What the data file beside an updater names; ends in "/".
    PublishedFile build;
    Answer buildPastCaches;  ///< To HEAD of an address that no cache can have seen.
    PublishedFile licence;   ///< Is never fetched: only its head counts.
    PublishedFile animation;
    /// Is never asked for its head, and only where builds have to be signed.
    PublishedFile signature;
};

}  // namespace publish_check
