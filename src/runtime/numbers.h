#pragma once

#include <cstdint>
#include <string_view>

namespace swiftpatch {

/// The runtime's numeric test: digits with at most one decimal point, a sign in front or none,
/// blanks around it or none.
bool IsNumeric(std::string_view text);

/// A numeric text as a 32-bit number, fractions rounded to the nearest, halves to even. Raises
/// error 13 for a text that is not numeric, 6 for a number that 32 signed bits cannot hold.
std::int32_t ToLong(std::string_view text);

/// A number rounded to 16 bits, halves to even. Raises error 6 when it does not fit.
std::int16_t ToInteger(double number);

}  // namespace swiftpatch
