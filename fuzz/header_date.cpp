#include "net/header_probe.h"
#include "property.h"
#include "runtime/datetime.h"
#include "runtime/internal/http_headers.h"
#include "runtime/runtime_error.h"
#include "runtime/strings.h"

namespace swiftpatch::fuzz {
namespace {

void CheckRoundTrip(DateTime time) {
    const DateParts parts = PartsOf(time);
    Always(parts.year >= 100 && parts.year <= 9999, "a date has a year of up to four digits");
    const std::string date = std::to_string(parts.month) + "/" + std::to_string(parts.day) + "/" +
                             ZeroPadded(parts.year, 4);
    const std::string clock = std::to_string(parts.hour) + ":" + std::to_string(parts.minute) +
                              ":" + std::to_string(parts.second);
    Always(ParseDateTime(date + " " + clock) == time, "a date written out is read back");
    const std::string shown = FormatLongDate(time) + " " + FormatTime12(time);
    const auto shownTime = ParseDateTime(shown);
    Always(shownTime.has_value(), "a date as it is shown can be read");
    Always(*shownTime ==
               MakeDateTime({parts.year, parts.month, parts.day, parts.hour, parts.minute, 0}),
           "a date as it is shown is the date to the minute");
}

void CheckDate(const std::string& header) {
    const std::string zoneless = Replace(header, " GMT", "");
    try {
        const std::string date = DateFromHeader(header);
        const auto time = ParseDateTime(date);
        Always(time.has_value(), "a header's date can be read");
        Always(date == "01/01/2001" || zoneless.ends_with(date), "a date is handed on as it came");
        CheckRoundTrip(*time);
    } catch (const RuntimeError& error) {
        Always(error.Number() == error_number::kInvalidProcedureCall && zoneless.empty(),
               "only an empty date raises an error");
    }
}

}  // namespace
}  // namespace swiftpatch::fuzz

/// The header lines of an answer, or a date text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace swiftpatch;
    const std::string_view input = fuzz::TextOf(data, size);
    fuzz::CheckDate(HeaderValue(input, "Last-modified"));
    fuzz::CheckDate(std::string(input));
    if (const auto time = ParseDateTime(input)) {
        fuzz::CheckRoundTrip(*time);
    }
    return 0;
}
