// The updater's own transfer control, over the platform's http library and message queue.
#include "publish_check/http_client.h"
#include "runtime/events.h"
#include "runtime/inet.h"
#include "runtime/runtime_error.h"

namespace publish_check {
namespace {

namespace inet_state = swiftpatch::inet_state;

constexpr std::size_t kChunk = std::size_t{64} * 1024;

/// Wine makes up a status line for a server that hangs up without an answer.
bool HasFields(const std::string& headers) { return headers.find(':') != std::string::npos; }

}  // namespace

struct HttpClient::Session {
    Session();

    void Note(int state);
    void Wait();
    std::int32_t ErrorNumber() const;
    void ReadBody(Answer& answer);

    swiftpatch::Inet inet{"Inet"};
    int lastState = 0;
    bool responded = false;   ///< Something came back to the request.
    bool redirected = false;  ///< The platform then asked once more.
};

HttpClient::Session::Session() {
    inet.RequestTimeout = kLongestSilence;
    inet.StateChanged = [this](int state) { Note(state); };
}

/// A request that is sent again without having been answered went over a connection that the server
/// had closed meanwhile; that is no redirect.
void HttpClient::Session::Note(int state) {
    lastState = state;
    redirected = redirected || (responded && state == inet_state::kRequesting);
    responded = responded || state == inet_state::kResponseReceived;
}

void HttpClient::Session::Wait() {
    while (inet.StillExecuting()) {
        swiftpatch::DoEventsResting();
    }
}

/// Of a request without an answer.
std::int32_t HttpClient::Session::ErrorNumber() const {
    return lastState == inet_state::kError ? inet.ResponseCode()
                                           : swiftpatch::error_number::kRequestFailed;
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

HttpClient::HttpClient() : session_(std::make_unique<Session>()) {}

HttpClient::~HttpClient() = default;

Answer HttpClient::Ask(const std::string& verb, const std::string& url) {
    swiftpatch::Inet& inet = session_->inet;
    session_->responded = session_->redirected = false;
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
        answer.problem = swiftpatch::RuntimeError(session_->ErrorNumber()).Description();
        inet.Cancel();
        return answer;
    }
    answer.status = inet.ResponseCode();
    answer.redirected = session_->redirected;
    if (verb == "GET") {
        session_->ReadBody(answer);
    }
    inet.Cancel();
    return answer;
}

}  // namespace publish_check
