// The updater's own transfer control, over the platform's http library and message queue.
#include <map>

#include "publish_check/certificate_days.h"
#include "publish_check/http_client.h"
#include "runtime/events.h"
#include "runtime/inet.h"
#include "runtime/internal/http_address.h"
#include "runtime/runtime_error.h"
#include "shared/transfer_fault.h"

namespace publish_check {
namespace {

namespace inet_state = swiftpatch::inet_state;

constexpr std::size_t kChunk = std::size_t{64} * 1024;

/// Wine makes up a status line for a server that hangs up without an answer.
bool HasFields(const std::string& headers) { return headers.find(':') != std::string::npos; }

}  // namespace

struct HttpClient::Session {
    Session();

    void Wait();
    std::string Problem() const;
    void ReadBody(Answer& answer);

    std::optional<std::int64_t> DaysOf(const std::string& url);

    swiftpatch::Inet inet{"Inet"};
    std::map<std::string, std::optional<std::int64_t>> days;  ///< By the server's name.
    int lastState = 0;
};

HttpClient::Session::Session() {
    inet.RequestTimeout = kLongestSilence;
    inet.StateChanged = [this](int state) { lastState = state; };
}

void HttpClient::Session::Wait() {
    while (inet.StillExecuting()) {
        swiftpatch::DoEventsResting();
    }
}

/// Of a request without an answer.
std::string HttpClient::Session::Problem() const {
    if (inet.Fault() != swiftpatch::TransferFault::kNone) {
        return swiftpatch::TransferFaultText(inet.Fault());
    }
    return swiftpatch::RuntimeError(lastState == inet_state::kError
                                        ? inet.ResponseCode()
                                        : swiftpatch::error_number::kRequestFailed)
        .Description();
}

void HttpClient::Session::ReadBody(Answer& answer) {
    try {
        for (swiftpatch::Bytes chunk = inet.GetChunk(kChunk); !chunk.empty();
             chunk = inet.GetChunk(kChunk)) {
            if (answer.body.size() + chunk.size() > kLargestBody) {
                answer.problem = kBodyTooLarge;
                return;
            }
            answer.body += chunk.View();
        }
    } catch (const swiftpatch::RuntimeError&) {
        answer.problem = kBodyLost;
    }
}

std::optional<std::int64_t> HttpClient::Session::DaysOf(const std::string& url) {
    const swiftpatch::HttpAddress address = swiftpatch::ParseHttpAddress(url);
    if (!address.secure) {
        return {};
    }
    if (!days.contains(address.host)) {
        days[address.host] = CertificateDays(url);
    }
    return days[address.host];
}

HttpClient::HttpClient() : session_(std::make_unique<Session>()) {}

HttpClient::~HttpClient() = default;

Answer HttpClient::Ask(const std::string& verb, const std::string& url) {
    swiftpatch::Inet& inet = session_->inet;
    Answer answer;
    try {
        inet.Execute(url, verb);
        session_->Wait();
    } catch (const swiftpatch::RuntimeError& error) {
        answer.problem = error.Description();
        return answer;
    }
    answer.headers = inet.GetHeader();
    answer.answered = HasFields(answer.headers);
    if (!answer.answered) {
        answer.problem = session_->Problem();
        inet.Cancel();
        return answer;
    }
    answer.status = inet.ResponseCode();
    answer.redirected = inet.Redirected();
    answer.address = inet.Address();
    answer.certificateDays = session_->DaysOf(answer.address);
    if (verb == "GET") {
        session_->ReadBody(answer);
    }
    inet.Cancel();
    return answer;
}

bool HttpClient::SendsBodyToHead(const std::string&) { return false; }

}  // namespace publish_check
