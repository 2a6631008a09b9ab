#include "runtime/numbers.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "runtime/runtime_error.h"
#include "runtime/strings.h"

namespace swiftpatch {
namespace {

/// Rounded in the default rounding mode: to the nearest, halves to even.
template <class T>
T Rounded(double number) {
    const double whole = std::nearbyint(number);
    if (!(whole >= std::numeric_limits<T>::min() && whole <= std::numeric_limits<T>::max())) {
        throw RuntimeError(error_number::kOverflow);
    }
    return static_cast<T>(whole);
}

}  // namespace

bool IsNumeric(std::string_view text) {
    text = TrimBlanks(text);
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        text.remove_prefix(1);
    }
    bool digit = false;
    bool point = false;
    for (const char character : text) {
        if (character >= '0' && character <= '9') {
            digit = true;
        } else if (character == '.' && !point) {
            point = true;
        } else {
            return false;
        }
    }
    return digit;
}

std::int32_t ToLong(std::string_view text) {
    if (!IsNumeric(text)) {
        throw RuntimeError(error_number::kTypeMismatch);
    }
    text = TrimBlanks(text);
    if (text.front() == '+') {
        text.remove_prefix(1);
    }
    double number = 0;
    const auto result =
        std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    if (result.ec == std::errc::result_out_of_range &&
        text.find_first_of("123456789") < text.find('.')) {
        throw RuntimeError(error_number::kOverflow);
    }
    return Rounded<std::int32_t>(number);
}

std::int16_t ToInteger(double number) { return Rounded<std::int16_t>(number); }

}  // namespace swiftpatch
