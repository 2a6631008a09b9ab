#include "support/byte_text.h"

#include <charconv>
#include <cstddef>

namespace swiftpatch {

std::span<const std::uint8_t> AsBytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::vector<std::uint8_t> DistinctBlocks(std::size_t length) {
    std::vector<std::uint8_t> bytes(length);
    for (std::size_t i = 0; i < length; ++i) {
        bytes[i] = static_cast<std::uint8_t>(i % 251);
    }
    return bytes;
}

std::string HexOf(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string digits;
    for (const std::uint8_t byte : bytes) {
        digits += kDigits[byte >> 4];
        digits += kDigits[byte & 15];
    }
    return digits;
}

std::vector<std::uint8_t> BytesOfHex(std::string_view digits) {
    std::vector<std::uint8_t> bytes;
    for (; !digits.empty(); digits.remove_prefix(2)) {
        std::uint8_t byte = 0;
        std::from_chars(digits.data(), digits.data() + 2, byte, 16);
        bytes.push_back(byte);
    }
    return bytes;
}

std::string EncodeBase64(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view kLetters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t bit = 0; bit < bytes.size() * 8; bit += 6) {
        const std::size_t at = bit / 8;
        const unsigned next = at + 1 < bytes.size() ? bytes[at + 1] : 0U;
        text += kLetters[(unsigned{bytes[at]} << 8 | next) >> (10 - bit % 8) & 63];
    }
    text.resize((text.size() + 3) / 4 * 4, '=');
    return text;
}

}  // namespace swiftpatch
