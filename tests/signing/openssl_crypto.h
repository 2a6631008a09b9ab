#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "signing/ed25519.h"

namespace swiftpatch::openssl {

// What src/signing computes, by OpenSSL. An error of OpenSSL's that is no answer is thrown.

std::vector<std::uint8_t> Blake2bOf(std::span<const std::uint8_t> bytes);
std::vector<std::uint8_t> Sha512Of(std::span<const std::uint8_t> bytes);

Ed25519Key PublicKeyOf(const std::array<std::uint8_t, 32>& seed);
Ed25519Signature Sign(const std::array<std::uint8_t, 32>& seed,
                      std::span<const std::uint8_t> message);
bool Verify(const Ed25519Key& key, std::span<const std::uint8_t> message,
            const Ed25519Signature& signature);

}  // namespace swiftpatch::openssl
