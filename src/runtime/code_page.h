#pragma once

#include <string>
#include <string_view>

namespace swiftpatch {

// Texts are bytes in the system's ANSI code page. In those of Japan, China and Korea a character
// can have two bytes, and the second one can look like a letter, a "\" or a "|".

/// True for a byte that begins a character of two bytes.
bool IsLeadByte(char byte);

/// `text` with every second byte of a character replaced by its first. No byte of it is taken for
/// another character, and each stands where it stands in `text`.
std::string MaskTrailBytes(std::string_view text);

/// `text` in capitals, with all the letters of the code page.
std::string UpperCase(std::string_view text);

}  // namespace swiftpatch
