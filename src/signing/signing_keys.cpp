#include "signing/signing_keys.h"

#include <algorithm>

#include "signing/base64.h"

namespace swiftpatch {
namespace {

// "Ed", the number and the key, as minisign writes them.
constexpr std::size_t kNumberAt = 2;
constexpr std::size_t kKeyAt = kNumberAt + std::tuple_size_v<SigningKeyNumber>;
constexpr std::size_t kWholeSize = kKeyAt + std::tuple_size_v<Ed25519Key>;

std::optional<SigningKey> ParseSigningKey(std::string_view text) {
    const std::optional<std::vector<std::uint8_t>> bytes = DecodeBase64(text);
    if (!bytes || bytes->size() != kWholeSize || bytes->at(0) != 'E' || bytes->at(1) != 'd') {
        return std::nullopt;
    }
    SigningKey key;
    std::copy_n(bytes->begin() + kNumberAt, key.number.size(), key.number.begin());
    std::copy_n(bytes->begin() + kKeyAt, key.key.size(), key.key.begin());
    return IsUsableEd25519Key(key.key) ? std::optional(key) : std::nullopt;
}

}  // namespace

std::optional<std::vector<SigningKey>> ParseSigningKeys(std::string_view text) {
    std::vector<SigningKey> keys;
    for (bool more = true; more;) {
        const std::size_t blank = text.find(' ');
        const std::optional<SigningKey> key = ParseSigningKey(text.substr(0, blank));
        if (!key || keys.size() == kMostSigningKeys) {
            return std::nullopt;
        }
        keys.push_back(*key);
        more = blank != std::string_view::npos;
        text.remove_prefix(more ? blank + 1 : text.size());
    }
    return keys;
}

}  // namespace swiftpatch
