#include "runtime/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "runtime/runtime_error.h"
#include "runtime/strings.h"

namespace swiftpatch {
namespace {

/// From here on a number of double precision has no places behind its point.
constexpr std::uint64_t kWholePrecision = std::uint64_t{1} << 53;

/// Rounded in the default rounding mode: to the nearest, halves to even.
template <class T>
T Rounded(double number) {
    const double whole = std::rint(number);
    if (!(whole >= std::numeric_limits<T>::min() && whole <= std::numeric_limits<T>::max())) {
        throw RuntimeError(error_number::kOverflow);
    }
    return static_cast<T>(whole);
}

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

/// Doubles the fraction that decimal digits behind a point spell. Returns what comes to stand
/// before the point: the fraction's next binary digit.
unsigned DoubleFraction(std::string& digits) {
    int carry = 0;
    std::for_each(digits.rbegin(), digits.rend(), [&carry](char& digit) {
        const int doubled = 2 * (digit - '0') + carry;
        carry = doubled / 10;
        digit = static_cast<char>('0' + doubled % 10);
    });
    return static_cast<unsigned>(carry);
}

/// The nearest number of double precision to a whole part and a fraction in decimal digits; of two
/// the even one.
double Nearest(std::uint64_t whole, std::string fraction) {
    constexpr int kMostPlaces = 63;
    std::uint64_t mantissa = whole;
    int places = 0;  // Of the mantissa, behind its binary point.
    while (mantissa < kWholePrecision && places < kMostPlaces) {
        mantissa = mantissa * 2 + DoubleFraction(fraction);
        ++places;
    }
    if (places == 0) {
        return static_cast<double>(mantissa);
    }
    const bool rest = fraction.find_first_not_of('0') != std::string::npos;
    const bool up = mantissa % 2 != 0 && (rest || mantissa % 4 == 3);
    const std::uint64_t rounded = mantissa / 2 + (up ? 1U : 0U);
    return static_cast<double>(rounded) / static_cast<double>(std::uint64_t{1} << (places - 1));
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
        if (IsDigit(character)) {
            digit = true;
        } else if (character == '.' && !point) {
            point = true;
        } else {
            return false;
        }
    }
    return digit;
}

double ToDouble(std::string_view text) {
    // Not by the library's functions: the code and tables of one alone are 20 KiB of the program.
    if (!IsNumeric(text)) {
        throw RuntimeError(error_number::kTypeMismatch);
    }
    std::uint64_t whole = 0;
    std::string fraction;
    bool pointPassed = false;
    for (const char character : text) {
        if (character == '.') {
            pointPassed = true;
        } else if (IsDigit(character) && pointPassed) {
            fraction += character;
        } else if (IsDigit(character) && whole < kWholePrecision) {
            whole = whole * 10 + static_cast<unsigned>(character - '0');
        }
    }
    const double number = Nearest(whole, std::move(fraction));
    return text.find('-') == std::string_view::npos ? number : -number;
}

std::int32_t ToLong(std::string_view text) { return Rounded<std::int32_t>(ToDouble(text)); }

std::int16_t ToInteger(double number) { return Rounded<std::int16_t>(number); }

NumberedText::NumberedText(std::int32_t number, std::string_view words) {
    char* const begin = text_.data();
    char* const end = std::to_chars(begin, begin + kMostDigits, number).ptr;
    size_ = static_cast<std::size_t>(std::copy(words.begin(), words.end(), end) - begin);
}

}  // namespace swiftpatch
