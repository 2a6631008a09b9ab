#pragma once

#include <string>
#include <string_view>

namespace swiftpatch {

/// `first` without its trailing backslashes, one "\", and `second` without its leading ones.
std::string JoinPath(std::string_view first, std::string_view second);

}  // namespace swiftpatch
