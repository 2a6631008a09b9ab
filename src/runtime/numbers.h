#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace swiftpatch {

/// The runtime's numeric test: digits with at most one decimal point, a sign in front or none,
/// blanks around it or none. Exponents, thousands separators and "&H" make a text no number.
bool IsNumeric(std::string_view text);

/// A numeric text as the nearest number of double precision; places behind the sixtieth binary one
/// do not count, and of a number of 2^53 or more only that it is so large. Raises error 13 for a
/// text that is not numeric.
double ToDouble(std::string_view text);

/// A numeric text as a 32-bit number, fractions rounded to the nearest, halves to even. Raises
/// error 13 for a text that is not numeric, 6 for a number that 32 signed bits cannot hold.
std::int32_t ToLong(std::string_view text);

/// A number rounded to 16 bits, halves to even. Raises error 6 when it does not fit.
std::int16_t ToInteger(double number);

/// A number in decimal digits with words after it, such as "7 of 9". For texts that are made
/// thousands of times a second: unlike strings they take no memory from the heap.
class NumberedText {
public:
    /// `words` is a literal.
    template <std::size_t kSize>
    NumberedText(std::int32_t number, const char (&words)[kSize])
        : NumberedText(number, std::string_view(words, kSize - 1)) {
        static_assert(kSize - 1 <= kMostWords);
    }
    operator std::string_view() const { return {text_.data(), size_}; }

private:
    static constexpr std::size_t kMostDigits = 11;  ///< Those of 32 bits, and a sign.
    static constexpr std::size_t kMostWords = 32;

    NumberedText(std::int32_t number, std::string_view words);

    std::array<char, kMostDigits + kMostWords> text_;
    std::size_t size_;
};

}  // namespace swiftpatch
