#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <memory>
#include <string>

#include "publish_check/server_state.h"

namespace publish_check {

/// Asks a server one request after the other, as an updater does: past every cache, without
/// cookies, following redirects, and giving up after 15 seconds of silence. On Windows it is the
/// updater's own transfer control, elsewhere libcurl.
class HttpClient {
public:
    HttpClient();
    ~HttpClient();
    HttpClient(const HttpClient&) = delete;
    HttpClient& operator=(const HttpClient&) = delete;

    /// `verb` is HEAD or GET, `url` begins with http:// or https://. Every failure is part of the
    /// answer.
    Answer Ask(const std::string& verb, const std::string& url);

    /// Whether `url` is answered to HEAD with a body as well, which no server should do (RFC 9110
    /// section 9.3.2). On Windows always false: there nobody is shown what follows the headers.
    bool SendsBodyToHead(const std::string& url);

private:
    struct Session;
    std::unique_ptr<Session> session_;
};

// The bounds that both keep.
inline constexpr long kLongestSilence = 15;  // Seconds; libcurl reads a long.
inline constexpr std::size_t kLargestBody = std::size_t{1} << 30U;

/// Whole days from now until a moment, in seconds since 1970.
inline std::int64_t DaysUntil(std::int64_t moment) {
    constexpr std::int64_t kSecondsADay = 86400;
    return (moment - std::time(nullptr)) / kSecondsADay;
}

// What both say of a body that is not all there, since only one of them knows more about it.
inline constexpr const char* kBodyLost = "the connection was lost, or silent for 15 seconds";
inline constexpr const char* kBodyTooLarge = "it is larger than one GiB";

}  // namespace publish_check
