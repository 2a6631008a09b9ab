#include <curl/curl.h>

#include <stdexcept>

#include "publish_check/http_client.h"
#include "runtime/runtime_error.h"

namespace publish_check {
namespace {

constexpr long kMostRedirects = 10;

size_t TakeBody(char* bytes, size_t size, size_t count, void* answer) {
    std::string& body = static_cast<Answer*>(answer)->body;
    if (body.size() + size * count > kLargestBody) {
        return 0;
    }
    body.append(bytes, size * count);
    return size * count;
}

/// The headers of the last answer count: those of redirects come before.
size_t TakeHeader(char* bytes, size_t size, size_t count, void* answer) {
    std::string& headers = static_cast<Answer*>(answer)->headers;
    const std::string line(bytes, size * count);
    if (line.starts_with("HTTP/")) {
        headers.clear();
    }
    headers += line;
    return size * count;
}

/// The body had begun when it failed, so that an updater has an answer.
bool IsInBody(CURLcode result, const Answer& answer) {
    const bool possible = result == CURLE_PARTIAL_FILE || result == CURLE_RECV_ERROR ||
                          result == CURLE_OPERATION_TIMEDOUT || result == CURLE_WRITE_ERROR;
    return possible && answer.headers.ends_with("\r\n\r\n");
}

/// Says what the updater's transfer control says, where that has words for it.
std::string ProblemOf(CURLcode result, bool inBody) {
    namespace error_number = swiftpatch::error_number;
    if (inBody) {
        return result == CURLE_WRITE_ERROR ? kBodyTooLarge : kBodyLost;
    }
    switch (result) {
        case CURLE_COULDNT_RESOLVE_HOST:
        case CURLE_COULDNT_RESOLVE_PROXY:
        case CURLE_COULDNT_CONNECT:
            return swiftpatch::RuntimeError(error_number::kNoConnection).Description();
        case CURLE_GOT_NOTHING:
        case CURLE_RECV_ERROR:
            return swiftpatch::RuntimeError(error_number::kRequestFailed).Description();
        case CURLE_OPERATION_TIMEDOUT:
            return swiftpatch::RuntimeError(error_number::kRequestTimedOut).Description();
        default:
            return curl_easy_strerror(result);
    }
}

struct ListDeleter {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
struct HandleDeleter {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};

}  // namespace

struct HttpClient::Session {
    std::unique_ptr<CURL, HandleDeleter> handle{curl_easy_init()};
    std::unique_ptr<curl_slist, ListDeleter> headers{
        curl_slist_append(nullptr, "Pragma: no-cache")};

    void Prepare(const std::string& verb, const std::string& url, Answer& answer) const;
};

void HttpClient::Session::Prepare(const std::string& verb, const std::string& url,
                                  Answer& answer) const {
    CURL* const curl = handle.get();
    curl_easy_reset(curl);
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl, CURLOPT_NOBODY, verb == "HEAD" ? 1L : 0L);
    curl_easy_setopt(curl, CURLOPT_USERAGENT, "SwiftPatch");
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, headers.get());
    curl_easy_setopt(curl, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http");
    curl_easy_setopt(curl, CURLOPT_REDIR_PROTOCOLS_STR, "http");
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl, CURLOPT_MAXREDIRS, kMostRedirects);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, kLongestSilence);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, kLongestSilence);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, TakeBody);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &answer);
    curl_easy_setopt(curl, CURLOPT_HEADERFUNCTION, TakeHeader);
    curl_easy_setopt(curl, CURLOPT_HEADERDATA, &answer);
}

HttpClient::HttpClient() : session_(std::make_unique<Session>()) {
    if (!session_->handle) {
        throw std::runtime_error("libcurl cannot be started");
    }
}

HttpClient::~HttpClient() = default;

Answer HttpClient::Ask(const std::string& verb, const std::string& url) {
    Answer answer;
    session_->Prepare(verb, url, answer);
    const CURLcode result = curl_easy_perform(session_->handle.get());
    long status = 0;
    long redirects = 0;
    curl_easy_getinfo(session_->handle.get(), CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(session_->handle.get(), CURLINFO_REDIRECT_COUNT, &redirects);
    answer.status = static_cast<int>(status);
    answer.redirected = redirects > 0;
    // A failure before the last answer's body began leaves nothing that an updater could use.
    const bool inBody = IsInBody(result, answer);
    if (result != CURLE_OK) {
        answer.problem = ProblemOf(result, inBody);
    }
    answer.closed = result == CURLE_PARTIAL_FILE;
    answer.answered = result == CURLE_OK || inBody;
    return answer;
}

}  // namespace publish_check
