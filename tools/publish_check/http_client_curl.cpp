#include <curl/curl.h>

#include <cstdlib>
#include <ctime>
#include <stdexcept>

#include "publish_check/http_client.h"
#include "runtime/internal/redirect_chain.h"
#include "runtime/runtime_error.h"
#include "runtime/strings.h"
#include "shared/transfer_fault.h"

namespace publish_check {
namespace {

using swiftpatch::TransferFault;

// What GnuTLS finds about a certificate (GNUTLS_CERT_*).
constexpr long kRevoked = 1L << 5;
constexpr long kUnknownIssuer = 1L << 6;
constexpr long kNotYetValid = 1L << 9;
constexpr long kExpired = 1L << 10;

size_t TakeBody(char* bytes, size_t size, size_t count, void* answer) {
    std::string& body = static_cast<Answer*>(answer)->body;
    if (body.size() + size * count > kLargestBody) {
        return 0;
    }
    body.append(bytes, size * count);
    return size * count;
}

/// Ends the request with an error: that there is a byte is all that counts.
size_t RefuseBody(char*, size_t, size_t, void*) { return 0; }

/// The headers of the last answer count: interim ones and a proxy's come before.
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

TransferFault FaultOf(CURLcode result, CURL* curl) {
    if (result == CURLE_SSL_CONNECT_ERROR) {
        return TransferFault::kSecureChannel;
    }
    if (result != CURLE_PEER_FAILED_VERIFICATION) {
        return TransferFault::kNone;
    }
    long found = 0;
    curl_easy_getinfo(curl, CURLINFO_SSL_VERIFYRESULT, &found);
    if (found == 0) {
        return TransferFault::kCertificateName;  // Which libcurl looks at itself.
    }
    if (!std::string_view(curl_version_info(CURLVERSION_NOW)->ssl_version).starts_with("GnuTLS")) {
        return TransferFault::kCertificateInvalid;
    }
    if ((found & (kNotYetValid | kExpired)) != 0) {
        return TransferFault::kCertificateExpired;
    }
    if ((found & kRevoked) != 0) {
        return TransferFault::kCertificateRevoked;
    }
    return (found & kUnknownIssuer) != 0 ? TransferFault::kCertificateAuthority
                                         : TransferFault::kCertificateInvalid;
}

/// Says what the updater's transfer control says, where that has words for it.
std::string ProblemOf(CURLcode result, bool inBody, TransferFault fault) {
    namespace error_number = swiftpatch::error_number;
    if (inBody) {
        return result == CURLE_WRITE_ERROR ? kBodyTooLarge : kBodyLost;
    }
    if (fault != TransferFault::kNone) {
        return swiftpatch::TransferFaultText(fault);
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

/// libcurl writes times as the library below it does: GnuTLS, OpenSSL.
std::optional<std::int64_t> TimeOf(const char* text) {
    for (const char* format : {"%Y-%m-%d %H:%M:%S", "%b %d %H:%M:%S %Y"}) {
        std::tm time{};
        if (strptime(text, format, &time) != nullptr) {
            return timegm(&time);
        }
    }
    return {};
}

/// Of the first certificate of the chain, which is the server's own.
std::optional<std::int64_t> CertificateDays(CURL* curl) {
    constexpr std::string_view kField = "Expire date:";
    curl_certinfo* chain = nullptr;
    if (curl_easy_getinfo(curl, CURLINFO_CERTINFO, &chain) != CURLE_OK || chain == nullptr ||
        chain->num_of_certs == 0) {
        return {};
    }
    for (const curl_slist* field = chain->certinfo[0]; field != nullptr; field = field->next) {
        const std::string_view text = field->data;
        if (swiftpatch::EqualWithoutCase(text.substr(0, kField.size()), kField)) {
            const auto end = TimeOf(text.substr(kField.size()).data());
            return end ? std::optional(DaysUntil(*end)) : std::nullopt;
        }
    }
    return {};
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
    std::unique_ptr<curl_slist, ListDeleter> lastRequest{
        curl_slist_append(nullptr, "Connection: close")};

    void Prepare(const std::string& verb, const std::string& url, Answer& answer) const;
    Answer AskOnce(const std::string& verb, const std::string& url) const;
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
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(curl, CURLOPT_CERTINFO, 1L);
    // As for every program over OpenSSL: other authorities than the system's.
    if (const char* authorities = std::getenv("SSL_CERT_FILE")) {
        curl_easy_setopt(curl, CURLOPT_CAINFO, authorities);
    }
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

Answer HttpClient::Session::AskOnce(const std::string& verb, const std::string& url) const {
    CURL* const curl = handle.get();
    Answer answer;
    Prepare(verb, url, answer);
    const CURLcode result = curl_easy_perform(curl);
    long status = 0;
    curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &status);
    answer.status = static_cast<int>(status);
    // A failure before the answer's body began leaves nothing that an updater could use.
    const bool inBody = IsInBody(result, answer);
    if (result != CURLE_OK) {
        answer.problem = ProblemOf(result, inBody, FaultOf(result, curl));
    }
    answer.certificateDays = CertificateDays(curl);
    answer.closed = result == CURLE_PARTIAL_FILE;
    answer.answered = result == CURLE_OK || inBody;
    return answer;
}

Answer HttpClient::Ask(const std::string& verb, const std::string& url) {
    swiftpatch::RedirectChain chain(swiftpatch::ParseHttpAddress(url));
    Answer answer;
    try {
        do {
            answer = session_->AskOnce(verb, swiftpatch::UrlOf(chain.Address()));
        } while (answer.answered && chain.Follow(answer.status, answer.headers));
    } catch (const swiftpatch::RuntimeError& error) {
        answer.answered = false;
        answer.problem = chain.Fault() == TransferFault::kNone
                             ? error.Description()
                             : swiftpatch::TransferFaultText(chain.Fault());
    }
    answer.address = swiftpatch::UrlOf(chain.Address());
    answer.redirected = chain.Length() != 0;
    return answer;
}

bool HttpClient::SendsBodyToHead(const std::string& url) {
    constexpr long kLongestWait = 3;  // Seconds, for a server that does not close.
    CURL* const curl = session_->handle.get();
    Answer answer;
    // As a GET, so that libcurl waits for a body; its name on the way is HEAD.
    session_->Prepare("GET", url, answer);
    curl_easy_setopt(curl, CURLOPT_CUSTOMREQUEST, "HEAD");
    curl_easy_setopt(curl, CURLOPT_FRESH_CONNECT, 1L);
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, session_->lastRequest.get());
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, RefuseBody);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, kLongestWait);
    return curl_easy_perform(curl) == CURLE_WRITE_ERROR;
}

}  // namespace publish_check
