// The updater's own transfer control, over the platform's http library and message queue.
#include "publish_check/http_client.h"
#include "runtime/events.h"
#include "runtime/inet.h"
#include "runtime/runtime_error.h"
#include "runtime/win32/system_library.h"

namespace publish_check {
namespace {

constexpr std::int32_t kLongestSilence = 15;  // Seconds.
constexpr std::size_t kLargestBody = std::size_t{1} << 30U;
constexpr std::size_t kChunk = std::size_t{64} * 1024;

void ReadBody(swiftpatch::Inet& inet, Answer& answer) {
    for (std::string chunk = inet.GetChunk(kChunk); !chunk.empty(); chunk = inet.GetChunk(kChunk)) {
        answer.body += chunk;
        if (answer.body.size() > kLargestBody) {
            answer.problem = "it is larger than one GiB";
            return;
        }
    }
}

}  // namespace

struct HttpClient::Session {
    swiftpatch::Inet inet{"Inet"};
};

HttpClient::HttpClient() {
    swiftpatch::KeepToSystemLibraries();
    session_ = std::make_unique<Session>();
    session_->inet.RequestTimeout = kLongestSilence;
}

HttpClient::~HttpClient() = default;

Answer HttpClient::Ask(const std::string& verb, const std::string& url) {
    swiftpatch::Inet& inet = session_->inet;
    Answer answer;
    try {
        inet.ResetRequest();
        inet.Execute(url, verb);
        while (inet.StillExecuting()) {
            swiftpatch::DoEventsResting();
        }
        answer.headers = inet.GetHeader();
        answer.answered = !answer.headers.empty();
        answer.status = inet.ResponseCode();
        if (!answer.answered) {
            answer.problem = swiftpatch::RuntimeError(answer.status).Description();
            answer.status = 0;
        } else if (verb == "GET") {
            ReadBody(inet, answer);
        }
    } catch (const swiftpatch::RuntimeError& error) {
        answer.problem = error.Description();
    }
    inet.Cancel();
    return answer;
}

}  // namespace publish_check
