#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace swiftpatch {

using Ed25519Key = std::array<std::uint8_t, 32>;
using Ed25519Signature = std::array<std::uint8_t, 64>;

/// Whether the bytes are a public key that can be trusted: the one form of a point of the curve
/// that is not of small order.
bool IsUsableEd25519Key(const Ed25519Key& key);

/// Whether the signature of the message was made with the secret of this public key (RFC 8032
/// section 5.1.7, without the factor 8). Strict where verifiers differ: false for a key that is not
/// usable, and for a second form of a signature.
bool VerifyEd25519(const Ed25519Key& key, std::span<const std::uint8_t> message,
                   const Ed25519Signature& signature);

}  // namespace swiftpatch
