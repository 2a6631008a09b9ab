#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace swiftpatch {

/// The line break of texts that are shown and of text files.
inline constexpr const char* kCrLf = "\r\n";

/// `text` with every occurrence of `find` (matched exactly, from the first character on) replaced.
std::string Replace(std::string_view text, std::string_view find, std::string_view with);

/// The last `count` characters of `text`, all of it when it has fewer. Raises error 5 for a
/// negative count.
std::string Right(std::string_view text, std::int64_t count);

/// `text` cut at every `separator`. An empty text has no parts.
std::vector<std::string> Split(std::string_view text, char separator);

/// `text` without leading and trailing blanks, tabs and line ends.
std::string_view TrimBlanks(std::string_view text);

/// Equality that takes A to Z and a to z (ASCII) as the same letters.
bool EqualWithoutCase(std::string_view left, std::string_view right);

/// `number` with at least `digits` digits, filled up with leading zeros ("00" is two digits). A
/// minus sign comes before the zeros.
std::string ZeroPadded(std::int32_t number, std::size_t digits);

}  // namespace swiftpatch
