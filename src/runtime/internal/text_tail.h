#pragma once

#include <cstddef>
#include <string_view>

namespace swiftpatch {

/// The last whole lines of a text that are no longer than `most` bytes together; all of it where it
/// is no longer itself. Lines end with CR LF. Of a last line that is too long, its last bytes.
std::string_view TextTail(std::string_view text, std::size_t most);

}  // namespace swiftpatch
