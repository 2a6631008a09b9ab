#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "signing/ed25519.h"

namespace swiftpatch {

/// What tells one key from another without trying them. Anybody may write it into a signature.
using SigningKeyNumber = std::array<std::uint8_t, 8>;

/// A public key of the maker's.
struct SigningKey {
    SigningKeyNumber number{};
    Ed25519Key key{};
};

/// The key in use, a spare one, and as many again for the time of a change.
inline constexpr std::size_t kMostSigningKeys = 4;

/// The keys in a text: each the second line of a minisign.pub, 56 letters, with one blank between
/// two of them. None of them for anything else at all, since a key that was mistyped may not leave
/// the others alone in charge, nor switch the protection off: no key, too many, a blank too many, a
/// letter that is wrong, a key that nothing could be signed with.
std::optional<std::vector<SigningKey>> ParseSigningKeys(std::string_view text);

}  // namespace swiftpatch
