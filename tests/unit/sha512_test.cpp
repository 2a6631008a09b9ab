#include "signing/sha512.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "support/byte_text.h"

namespace swiftpatch {
namespace {

std::string HashOf(std::string_view text) {
    Sha512 hash;
    hash.Update(AsBytes(text));
    return HexOf(hash.Finish());
}

// RFC 6234, section 8.5.
TEST(Sha512, HashesTheExamplesOfItsDescription) {
    EXPECT_EQ(HashOf("abc"),
              "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a"
              "2192992a274fc1a836ba3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f");
    EXPECT_EQ(HashOf("abcdefghbcdefghicdefghijdefghijkefghijklfghijklmghijklmn"
                     "hijklmnoijklmnopjklmnopqklmnopqrlmnopqrsmnopqrstnopqrstu"),
              "8e959b75dae313da8cf4f72814fc143f8f7779c6eb9f7fa17299aeadb6889018"
              "501d289e4900f7e4331b99dec4b5433ac7d329eeb6dd26545e96e55b874be909");
    EXPECT_EQ(HashOf(std::string(1000000, 'a')),
              "e718483d0ce769644e2e42c7bc15b4638e1f98b13b2044285632a803afa973eb"
              "de0ff244877ea60a4cb0432ce577c31beb009c5c2c49aa2e4eadb217ad8cc09b");
}

TEST(Sha512, HashesNothingAtAll) {
    EXPECT_EQ(HashOf(""),
              "cf83e1357eefb8bdf1542850d66d8007d620e4050b5715dc83f4a921d36ce9ce"
              "47d0d13c5d85f2b0ff8318d2877eec2f63b931bd47417a81a538327af927da3e");
}

// The hash of the hashes, by another implementation: the padding may or may not fit into the block.
TEST(Sha512, HashesEveryLengthUpToSomeBlocks) {
    Sha512 all;
    for (std::size_t length = 0; length <= 300; ++length) {
        Sha512 one;
        one.Update(DistinctBlocks(length));
        all.Update(one.Finish());
    }
    EXPECT_EQ(HexOf(all.Finish()),
              "da20b3b598f77f25e2e2d1941e345bfe16543f32378fbc8447fbb64f038964ce"
              "a0808c9d450e5e83ac095f5656c102b2ff15a8e0501c7553a7afe1e0256b5e09");
}

TEST(Sha512, IsTheSameHoweverTheBytesComeIn) {
    const std::vector<std::uint8_t> bytes = DistinctBlocks(300);
    Sha512 whole;
    whole.Update(bytes);
    const Sha512::Digest expected = whole.Finish();
    for (std::size_t border = 0; border <= bytes.size(); ++border) {
        Sha512 parts;
        parts.Update(std::span(bytes).first(border));
        parts.Update(std::span(bytes).subspan(border));
        EXPECT_EQ(parts.Finish(), expected) << border;
    }
}

}  // namespace
}  // namespace swiftpatch
