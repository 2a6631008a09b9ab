#include "runtime/numbers.h"

#include <cstring>

#include "property.h"
#include "reference.h"
#include "runtime/runtime_error.h"
#include "runtime/strings.h"

namespace swiftpatch::fuzz {
namespace {

void CheckText(std::string_view text) {
    const std::string padded = " \t" + std::string(text) + "\r\n";
    const bool numeric = IsNumeric(text);
    Always(IsNumeric(padded) == numeric, "blanks around a number change nothing");
    try {
        const std::int32_t number = ToLong(text);
        Always(numeric, "what is no number is not converted");
        Always(number == WholeNumber(TrimBlanks(text)), "a number is what its text spells");
        const std::string written = ZeroPadded(number, 12);
        Always(ToLong(written) == number && written.size() >= 12, "a number written is read back");
    } catch (const RuntimeError& error) {
        Always(error.Number() == (numeric ? error_number::kOverflow : error_number::kTypeMismatch),
               "a number overflows and another text is of the wrong type");
        Always(!numeric || !FitsLong(WholeNumber(TrimBlanks(text))), "only large numbers overflow");
    }
}

void CheckInteger(double number) {
    const double whole = std::nearbyint(number);
    const bool fits = whole >= -32768 && whole <= 32767;
    try {
        Always(ToInteger(number) == whole && fits, "an integer is the nearest one");
    } catch (const RuntimeError& error) {
        Always(error.Number() == error_number::kOverflow && !fits, "only large numbers overflow");
    }
}

}  // namespace
}  // namespace swiftpatch::fuzz

/// A numeric text; its first bytes also as a floating-point number.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    swiftpatch::fuzz::CheckText(swiftpatch::fuzz::TextOf(data, size));
    double number = 0;
    if (size >= sizeof(number)) {
        std::memcpy(&number, data, sizeof(number));
        swiftpatch::fuzz::CheckInteger(number);
    }
    return 0;
}
