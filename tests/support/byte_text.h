#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace swiftpatch {

/// The letters as the bytes that they are.
std::span<const std::uint8_t> AsBytes(std::string_view text);

/// Bytes of which no two blocks of a hash are alike.
std::vector<std::uint8_t> DistinctBlocks(std::size_t length);

/// Two digits for a byte.
std::string HexOf(std::span<const std::uint8_t> bytes);
std::vector<std::uint8_t> BytesOfHex(std::string_view digits);

std::string EncodeBase64(std::span<const std::uint8_t> bytes);

}  // namespace swiftpatch
