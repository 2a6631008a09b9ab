#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace swiftpatch {

/// The bytes that a text stands for in base64 (RFC 4648 section 4). None unless it is the one text
/// that stands for them: no other letters, the padding complete, unused bits zero.
std::optional<std::vector<std::uint8_t>> DecodeBase64(std::string_view text);

}  // namespace swiftpatch
