#pragma once

#include <string>
#include <string_view>

namespace swiftpatch {

/// The value of the first header field `name` in `headers`, without the blanks around it; empty
/// when there is none. Names are matched without regard to case (RFC 9110 section 5). `headers`
/// holds the status line and the fields, each ended by CR LF or LF.
std::string HeaderValue(std::string_view headers, std::string_view name);

}  // namespace swiftpatch
