#pragma once

#include <cmath>
#include <cstdlib>
#include <string>
#include <string_view>

namespace swiftpatch::fuzz {

/// A numeric text as the C library reads it, rounded to a whole number; infinite beyond its range.
inline double WholeNumber(std::string_view text) {
    return std::nearbyint(std::strtod(std::string(text).c_str(), nullptr));
}

inline bool FitsLong(double whole) { return whole >= -2147483648.0 && whole <= 2147483647.0; }

}  // namespace swiftpatch::fuzz
