#include "signing/base64.h"

#include <algorithm>
#include <cstddef>

namespace swiftpatch {
namespace {

constexpr std::string_view kLetters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// How many letters stand for three bytes.
constexpr std::size_t kGroup = 4;

}  // namespace

std::optional<std::vector<std::uint8_t>> DecodeBase64(std::string_view text) {
    const std::string_view letters = text.substr(0, std::min(text.find('='), text.size()));
    const std::string_view padding = text.substr(letters.size());
    if (text.size() % kGroup != 0 || padding != std::string_view("==").substr(0, padding.size())) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> bytes;
    std::uint32_t pending = 0;
    unsigned bits = 0;
    for (const char letter : letters) {
        const std::size_t value = kLetters.find(letter);
        if (value == std::string_view::npos) {
            return std::nullopt;
        }
        pending = pending << 6 | static_cast<std::uint32_t>(value);
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            bytes.push_back(static_cast<std::uint8_t>(pending >> bits));
            pending &= (1U << bits) - 1;
        }
    }
    return pending == 0 ? std::optional(std::move(bytes)) : std::nullopt;
}

}  // namespace swiftpatch
