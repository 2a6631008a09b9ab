#include "signing/blake2b.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "support/byte_text.h"

namespace swiftpatch {
namespace {

class Blake2bWith : public testing::TestWithParam<Blake2b::Mixing> {
protected:
    static Blake2b New() { return Blake2b(GetParam()); }

    static std::string HashOf(std::string_view text) {
        Blake2b hash = New();
        hash.Update(AsBytes(text));
        return HexOf(hash.Finish());
    }
};

INSTANTIATE_TEST_SUITE_P(Mixing, Blake2bWith,
                         testing::Values(Blake2b::Mixing::kPlain, Blake2b::Mixing::kSse2));

// RFC 7693, appendix A.
TEST_P(Blake2bWith, HashesTheExampleOfItsDescription) {
    EXPECT_EQ(HashOf("abc"),
              "ba80a53f981c4d0d6a2797b69f12f6e94c212f14685ac4b74b12bb6fdbffa2d1"
              "7d87c5392aab792dc252d5de4533cc9518d38aa8dbf1925ab92386edd4009923");
}

TEST_P(Blake2bWith, HashesNothingAtAll) {
    EXPECT_EQ(HashOf(""),
              "786a02f742015903c6c6fd852552d272912f4740e15847618a86e217f71f5419"
              "d25e1031afee585313896444934eb04b903a685b1448b755d56f701afe9be2ce");
}

TEST_P(Blake2bWith, HashesAMillionLetters) {
    EXPECT_EQ(HashOf(std::string(1000000, 'a')),
              "98fb3efb7206fd19ebf69b6f312cf7b64e3b94dbe1a17107913975a793f177e1"
              "d077609d7fba363cbba00d05f7aa4e4fa8715d6428104c0a75643b0ff3fd3eaf");
}

// The hash of the hashes, by another implementation: the last block may be empty, short or full.
TEST_P(Blake2bWith, HashesEveryLengthUpToSomeBlocks) {
    Blake2b all = New();
    for (std::size_t length = 0; length <= 300; ++length) {
        Blake2b one = New();
        one.Update(DistinctBlocks(length));
        all.Update(one.Finish());
    }
    EXPECT_EQ(HexOf(all.Finish()),
              "b6e92e8500fff38c4e359c2371b89d5f2f8148f1f6e2ba53c71375f13a2a7770"
              "d8c459fec4024309f7731597dbf57d1c8cbd5bdd7e4a07beccb3c063a504ddc0");
}

TEST_P(Blake2bWith, IsTheSameHoweverTheBytesComeIn) {
    const std::vector<std::uint8_t> bytes = DistinctBlocks(1000);
    Blake2b whole = New();
    whole.Update(bytes);
    const Blake2b::Digest expected = whole.Finish();
    for (std::size_t step = 1; step <= 300; ++step) {
        Blake2b parts = New();
        for (std::size_t at = 0; at < bytes.size(); at += step) {
            const std::span rest = std::span(bytes).subspan(at);
            parts.Update(rest.first(std::min(step, rest.size())));
            parts.Update({});
        }
        EXPECT_EQ(parts.Finish(), expected) << step;
    }
}

}  // namespace
}  // namespace swiftpatch
