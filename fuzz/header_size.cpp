#include "net/header_probe.h"
#include "property.h"
#include "reference.h"
#include "runtime/internal/http_headers.h"
#include "runtime/numbers.h"
#include "runtime/runtime_error.h"
#include "runtime/strings.h"

namespace swiftpatch::fuzz {
namespace {

void CheckSize(const std::string& value) {
    try {
        const std::int32_t size = SizeFromHeader(value);
        Always(size == -1 || size >= 1, "a size is unknown or positive");
        if (IsNumeric(value)) {
            const double whole = WholeNumber(value);
            Always(size == (whole >= 1 ? whole : -1), "a numeric size is the number it spells");
        } else {
            Always(size == -1, "a size that is no number is unknown");
        }
    } catch (const RuntimeError& error) {
        Always(error.Number() == error_number::kOverflow, "the only error is an overflow");
        Always(IsNumeric(value) && !FitsLong(WholeNumber(value)),
               "only too large a size overflows");
    }
}

}  // namespace
}  // namespace swiftpatch::fuzz

/// The header lines of an answer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace swiftpatch;
    const std::string_view headers = fuzz::TextOf(data, size);
    const std::string value = HeaderValue(headers, "Content-length");
    fuzz::Always(value == TrimBlanks(value), "a header's value has no blanks around it");
    fuzz::Always(value.find('\n') == std::string::npos, "a header's value is of one line");
    fuzz::Always(headers.find(value) != std::string_view::npos, "a header's value stands in it");
    fuzz::CheckSize(value);
    fuzz::CheckSize(std::string(headers));
    return 0;
}
