#include "support/minisign_signer.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <vector>

#include "signing/curve_point.h"
#include "signing/sha512.h"
#include "support/byte_text.h"

namespace swiftpatch {
namespace {

using Half = std::array<std::uint8_t, 32>;

Sha512::Digest HashOf(std::initializer_list<std::span<const std::uint8_t>> parts) {
    Sha512 hash;
    for (const std::span<const std::uint8_t> part : parts) {
        hash.Update(part);
    }
    return hash.Finish();
}

Half FirstHalf(const Sha512::Digest& digest) {
    Half half;
    std::copy_n(digest.begin(), half.size(), half.begin());
    return half;
}

Scalar ReducedHalf(const Half& half) {
    std::array<std::uint8_t, 64> bytes{};
    std::copy(half.begin(), half.end(), bytes.begin());
    return ReducedScalar(bytes);
}

/// a * b + c
Scalar ProductAndSum(const Scalar& a, const Scalar& b, const Scalar& c) {
    constexpr std::size_t kSize = std::tuple_size_v<Limbs>;
    std::array<std::uint32_t, 2 * kSize> limbs{};
    std::copy(c.limbs.begin(), c.limbs.end(), limbs.begin());
    for (std::size_t i = 0; i < kSize; ++i) {
        std::uint64_t carry = 0;
        for (std::size_t j = 0; j < kSize; ++j) {
            carry += std::uint64_t{a.limbs[i]} * b.limbs[j] + limbs[i + j];
            limbs[i + j] = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
        limbs[i + kSize] = static_cast<std::uint32_t>(carry);
    }
    std::array<std::uint8_t, 64> bytes;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::uint8_t>(limbs[i / 4] >> i % 4 * 8);
    }
    return ReducedScalar(bytes);
}

Half MultipleOfBase(const Scalar& factor) {
    constexpr CurvePoint kNeutral{{{0}}, {{1}}, {{1}}, {{0}}};
    return EncodePoint(SumOfMultiples(factor, Scalar{}, kNeutral));
}

/// The two letters of the algorithm, the key's number, and the rest, as base64.
std::string Tagged(std::string_view algorithm, const SigningKeyNumber& number,
                   std::span<const std::uint8_t> rest) {
    std::vector<std::uint8_t> bytes(algorithm.begin(), algorithm.end());
    bytes.insert(bytes.end(), number.begin(), number.end());
    bytes.insert(bytes.end(), rest.begin(), rest.end());
    return EncodeBase64(bytes);
}

}  // namespace

MinisignSigner::MinisignSigner(const Seed& seed) {
    const Sha512::Digest hash = HashOf({seed});
    Half secret = FirstHalf(hash);
    secret.front() &= 0xF8;
    secret.back() = static_cast<std::uint8_t>((secret.back() & 0x3F) | 0x40);
    secret_ = ReducedHalf(secret);
    std::copy_n(hash.begin() + prefix_.size(), prefix_.size(), prefix_.begin());
    publicKey_.key = MultipleOfBase(secret_);
    std::copy_n(publicKey_.key.begin(), publicKey_.number.size(), publicKey_.number.begin());
}

MinisignSigner::MinisignSigner(std::string_view name)
    : MinisignSigner(FirstHalf(HashOf({AsBytes(name)}))) {}

void MinisignSigner::TakeNumberOf(const MinisignSigner& other) {
    publicKey_.number = other.publicKey_.number;
}

std::string MinisignSigner::PublicKeyText() const {
    return Tagged("Ed", publicKey_.number, publicKey_.key);
}

Ed25519Signature MinisignSigner::Sign(std::span<const std::uint8_t> message) const {
    const Scalar r = ReducedScalar(HashOf({prefix_, message}));
    const Half point = MultipleOfBase(r);
    const Scalar k = ReducedScalar(HashOf({point, publicKey_.key, message}));
    const Half s = BytesOf(ProductAndSum(k, secret_, r).limbs);
    Ed25519Signature signature;
    std::copy(point.begin(), point.end(), signature.begin());
    std::copy(s.begin(), s.end(), signature.begin() + point.size());
    return signature;
}

std::string MinisignSigner::SignBuild(const Blake2b::Digest& hash,
                                      std::string_view trustedComment) const {
    const Ed25519Signature first = Sign(hash);
    std::vector<std::uint8_t> covered(first.begin(), first.end());
    covered.insert(covered.end(), trustedComment.begin(), trustedComment.end());
    return "untrusted comment: signature from minisign secret key\n" +
           Tagged("ED", publicKey_.number, first) +
           "\ntrusted comment: " + std::string(trustedComment) + "\n" +
           EncodeBase64(Sign(covered)) + "\n";
}

std::string TrustedCommentFor(std::string_view fileName) {
    return "timestamp:1700000000\tfile:" + std::string(fileName) + "\thashed";
}

Blake2b::Digest HashOfBuild(std::string_view build) {
    Blake2b hash;
    hash.Update(AsBytes(build));
    return hash.Finish();
}

}  // namespace swiftpatch
