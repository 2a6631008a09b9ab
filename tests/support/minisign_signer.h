#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "signing/blake2b.h"
#include "signing/ed25519.h"
#include "signing/group_scalar.h"
#include "signing/signing_keys.h"

namespace swiftpatch {

/// A key pair that signs builds as the program minisign does, for tests: natively, on Windows,
/// always with the same result. It guards its secret from nobody.
class MinisignSigner {
public:
    using Seed = std::array<std::uint8_t, 32>;

    /// The key pair of RFC 8032 section 5.1.5 whose secret is `seed`.
    explicit MinisignSigner(const Seed& seed);

    /// A key pair of its own for each name.
    explicit MinisignSigner(std::string_view name);

    /// From now on under the number of another key pair, as anybody can who wants to deceive.
    void TakeNumberOf(const MinisignSigner& other);

    const SigningKey& PublicKey() const { return publicKey_; }

    /// The second line of a minisign.pub.
    std::string PublicKeyText() const;

    /// The signature of any message (RFC 8032 section 5.1.6).
    Ed25519Signature Sign(std::span<const std::uint8_t> message) const;

    /// The four lines that minisign writes for a build with this hash.
    std::string SignBuild(const Blake2b::Digest& hash, std::string_view trustedComment) const;

private:
    Scalar secret_;
    std::array<std::uint8_t, 32> prefix_{};
    SigningKey publicKey_;
};

/// The trusted comment that minisign writes when it is told none.
std::string TrustedCommentFor(std::string_view fileName);

/// The hash of a build that is in memory.
Blake2b::Digest HashOfBuild(std::string_view build);

}  // namespace swiftpatch
