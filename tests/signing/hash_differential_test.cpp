#include <gtest/gtest.h>

#include <algorithm>
#include <span>

#include "openssl_crypto.h"
#include "random_bytes.h"
#include "signing/blake2b.h"
#include "signing/sha512.h"
#include "support/byte_text.h"

namespace swiftpatch {
namespace {

constexpr int kShortInputs = 3000;
constexpr int kLongInputs = 100;
constexpr std::size_t kLongest = 200000;

/// The hash of bytes that come in pieces of any length.
template <typename Hash>
std::string InPieces(Hash hash, std::span<const std::uint8_t> bytes, RandomBytes& random) {
    const std::size_t longest = 1 + random.Below(bytes.size() + 1);
    while (!bytes.empty()) {
        const std::size_t length = std::min(bytes.size(), random.Below(longest + 1));
        hash.Update(bytes.first(length));
        bytes = bytes.subspan(length);
    }
    return HexOf(hash.Finish());
}

void Compare(std::size_t longest, RandomBytes& random) {
    const std::vector<std::uint8_t> bytes = random.Bytes(random.Below(longest + 1));
    const std::string blake2b = HexOf(openssl::Blake2bOf(bytes));
    for (const auto mixing : {Blake2b::Mixing::kPlain, Blake2b::Mixing::kSse2}) {
        ASSERT_EQ(InPieces(Blake2b(mixing), bytes, random), blake2b) << HexOf(bytes);
    }
    ASSERT_EQ(InPieces(Sha512(), bytes, random), HexOf(openssl::Sha512Of(bytes))) << HexOf(bytes);
}

TEST(HashDifferential, AgreesWithOpenSslOnAnyBytesInAnyPieces) {
    RandomBytes random(1);
    for (int i = 0; i < kShortInputs; ++i) {
        Compare(600, random);
    }
    for (int i = 0; i < kLongInputs; ++i) {
        Compare(kLongest, random);
    }
}

}  // namespace
}  // namespace swiftpatch
