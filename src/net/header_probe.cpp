#include "net/header_probe.h"

#include "mainwindow/frmSwiftPatch.h"
#include "net/wait.h"
#include "runtime/datetime.h"
#include "runtime/events.h"
#include "runtime/numbers.h"
#include "runtime/runtime_error.h"
#include "runtime/strings.h"

namespace swiftpatch {
namespace {

constexpr std::int32_t kMostYields = 5000000;
constexpr std::int32_t kUnknownSize = -1;
constexpr const char* kUnknownDate = "01/01/2001";
constexpr std::int16_t kPauseAfterError = 3;  // Seconds.

void StartProbe(frmSwiftPatch& window, const std::string& url) {
    window.headerProbe = true;
    window.Inet1.ResetRequest();
    window.Inet1.Execute(url, "HEAD");
}

/// Counts yields, not time. Returns true when the limit was reached.
bool WaitForAnswer(frmSwiftPatch& window) {
    std::int32_t counter = 0;
    while (window.Inet1.StillExecuting() && counter != kMostYields) {
        ++counter;
        DoEventsResting();
    }
    return counter == kMostYields;
}

void WaitForAnswerWithoutLimit(frmSwiftPatch& window) {
    while (window.Inet1.StillExecuting()) {
        DoEventsResting();
    }
}

}  // namespace

std::int32_t SizeFromHeader(const std::string& header) {
    const std::int32_t size = IsNumeric(header) ? ToLong(header) : kUnknownSize;
    return size >= 1 ? size : kUnknownSize;
}

std::string DateFromHeader(const std::string& header) {
    const std::string zoneless = Replace(header, " GMT", "");
    const std::size_t found = zoneless.find(", ");
    // Position 0 when ", " is absent: the first character is then dropped, and an empty text makes
    // the count negative, which is error 5.
    const auto position =
        found == std::string::npos ? std::int64_t{0} : static_cast<std::int64_t>(found) + 1;
    const std::string text =
        Right(zoneless, static_cast<std::int64_t>(zoneless.size()) - position - 1);
    // The date stays as the server wrote it: the check reads that text again.
    return ParseDateTime(text) ? text : kUnknownDate;
}

std::int32_t GetHTTPFileSize(frmSwiftPatch& window, const std::string& url) {
    try {
        StartProbe(window, url);
        std::string header = "x";
        if (!WaitForAnswer(window)) {
            header = window.Inet1.GetHeader("Content-length");
            WaitForAnswer(window);
        }
        const std::int32_t size = SizeFromHeader(header);
        window.headerProbe = false;
        return size;
    } catch (const RuntimeError&) {
        window.headerProbe = false;
        WaitSeconds(kPauseAfterError);
        return kUnknownSize;
    }
}

std::string GetHTTPFileDate(frmSwiftPatch& window, const std::string& url) {
    try {
        StartProbe(window, url);
        WaitForAnswerWithoutLimit(window);
        const std::string header = window.Inet1.GetHeader("Last-modified");
        WaitForAnswerWithoutLimit(window);
        std::string date = DateFromHeader(header);
        window.headerProbe = false;
        return date;
    } catch (const RuntimeError&) {
        window.headerProbe = false;
        WaitSeconds(kPauseAfterError);
        return kUnknownDate;
    }
}

}  // namespace swiftpatch
