#include "openssl_crypto.h"

#include <openssl/evp.h>

#include <cstddef>
#include <memory>
#include <stdexcept>

namespace swiftpatch::openssl {
namespace {

using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using Context = std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)>;

void Require(bool done) {
    if (!done) {
        throw std::runtime_error("OpenSSL cannot do this");
    }
}

Context NewContext() { return {EVP_MD_CTX_new(), EVP_MD_CTX_free}; }

Key PrivateKey(const std::array<std::uint8_t, 32>& seed) {
    Key key(EVP_PKEY_new_raw_private_key(EVP_PKEY_ED25519, nullptr, seed.data(), seed.size()),
            EVP_PKEY_free);
    Require(key != nullptr);
    return key;
}

std::vector<std::uint8_t> DigestOf(const EVP_MD* kind, std::span<const std::uint8_t> bytes) {
    std::vector<std::uint8_t> digest(EVP_MAX_MD_SIZE);
    unsigned length = 0;
    Require(EVP_Digest(bytes.data(), bytes.size(), digest.data(), &length, kind, nullptr) == 1);
    digest.resize(length);
    return digest;
}

}  // namespace

std::vector<std::uint8_t> Blake2bOf(std::span<const std::uint8_t> bytes) {
    return DigestOf(EVP_blake2b512(), bytes);
}

std::vector<std::uint8_t> Sha512Of(std::span<const std::uint8_t> bytes) {
    return DigestOf(EVP_sha512(), bytes);
}

Ed25519Key PublicKeyOf(const std::array<std::uint8_t, 32>& seed) {
    Ed25519Key key{};
    std::size_t length = key.size();
    Require(EVP_PKEY_get_raw_public_key(PrivateKey(seed).get(), key.data(), &length) == 1);
    return key;
}

Ed25519Signature Sign(const std::array<std::uint8_t, 32>& seed,
                      std::span<const std::uint8_t> message) {
    const Key key = PrivateKey(seed);
    const Context context = NewContext();
    Ed25519Signature signature{};
    std::size_t length = signature.size();
    Require(EVP_DigestSignInit(context.get(), nullptr, nullptr, nullptr, key.get()) == 1);
    Require(EVP_DigestSign(context.get(), signature.data(), &length, message.data(),
                           message.size()) == 1);
    return signature;
}

bool Verify(const Ed25519Key& key, std::span<const std::uint8_t> message,
            const Ed25519Signature& signature) {
    const Key point(EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, key.data(), key.size()),
                    EVP_PKEY_free);
    const Context context = NewContext();
    Require(EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, point.get()) == 1);
    return EVP_DigestVerify(context.get(), signature.data(), signature.size(), message.data(),
                            message.size()) == 1;
}

}  // namespace swiftpatch::openssl
