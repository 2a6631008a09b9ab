#pragma once

#include <string>
#include <string_view>

namespace swiftpatch {

/// Whether a line of the text of an INI file begins with `key`, in any section and whatever
/// follows; upper and lower case are the same. The text may be one of 16-bit characters, and begin
/// with a mark of its encoding.
bool HasLineOfKey(std::string text, std::string_view key);

}  // namespace swiftpatch
