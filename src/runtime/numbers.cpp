#include "runtime/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

#include "runtime/runtime_error.h"
#include "runtime/strings.h"

namespace swiftpatch {
namespace {

/// Rounded in the default rounding mode: to the nearest, halves to even.
template <class T>
T Rounded(double number) {
    const double whole = std::rint(number);
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
    // Not by the library's newer function: its tables alone are a tenth of the program.
    return Rounded<std::int32_t>(std::strtod(std::string(text).c_str(), nullptr));
}

std::int16_t ToInteger(double number) { return Rounded<std::int16_t>(number); }

NumberedText::NumberedText(std::int32_t number, std::string_view words) {
    char* const begin = text_.data();
    char* const end = std::to_chars(begin, begin + kMostDigits, number).ptr;
    size_ = static_cast<std::size_t>(std::copy(words.begin(), words.end(), end) - begin);
}

}  // namespace swiftpatch
