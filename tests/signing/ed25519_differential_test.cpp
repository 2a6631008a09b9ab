#include <gtest/gtest.h>

#include <algorithm>
#include <span>

#include "openssl_crypto.h"
#include "random_bytes.h"
#include "signing/curve_point.h"
#include "signing/group_scalar.h"
#include "signing/sha512.h"
#include "support/byte_text.h"
#include "support/minisign_signer.h"

namespace swiftpatch {
namespace {

constexpr int kKeys = 1000;
constexpr int kChangesOfEach = 12;
constexpr std::size_t kShort = 200;
constexpr std::size_t kLongest = 200000;

/// L, the least significant byte first.
constexpr std::array<std::uint8_t, 32> kOrder = {
    0xED, 0xD3, 0xF5, 0x5C, 0x1A, 0x63, 0x12, 0x58, 0xD6, 0x9C, 0xF7, 0xA2, 0xDE, 0xF9, 0xDE, 0x14,
    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0x10};

struct Case {
    Ed25519Key key{};
    std::vector<std::uint8_t> message;
    Ed25519Signature signature{};
};

/// `number` + `summand`, as far as it fits; the least significant byte first.
void Add(std::span<std::uint8_t> number, std::span<const std::uint8_t> summand) {
    unsigned carry = 0;
    for (std::size_t i = 0; i < number.size(); ++i) {
        carry += number[i] + (i < summand.size() ? summand[i] : 0U);
        number[i] = static_cast<std::uint8_t>(carry);
        carry >>= 8;
    }
}

/// The verdict of both.
bool Agreed(const Case& it) {
    const bool ours = VerifyEd25519(it.key, it.message, it.signature);
    EXPECT_EQ(ours, openssl::Verify(it.key, it.message, it.signature))
        << HexOf(it.key) << ' ' << HexOf(it.message) << ' ' << HexOf(it.signature);
    return ours;
}

/// One change that leaves nothing valid.
Case Changed(Case it, RandomBytes& random) {
    const std::size_t kind = random.Below(8);
    if (kind == 0) {
        FlipBit(it.key, random.Below(256));
    } else if (kind == 1) {
        it.message.push_back(static_cast<std::uint8_t>(random.Below(256)));
    } else if (kind == 2 && !it.message.empty()) {
        FlipBit(it.message, random.Below(it.message.size() * 8));
    } else if (kind <= 4) {
        Add(std::span(it.signature).last(32), kOrder);
    } else {
        FlipBit(it.signature, random.Below(512));
    }
    return it;
}

TEST(Ed25519Differential, AgreesWithOpenSslOnSignaturesAndOnChangesOfThem) {
    RandomBytes random(2);
    for (int i = 0; i < kKeys; ++i) {
        const auto seed = random.Seed();
        const std::size_t longest = i % 10 == 0 ? kLongest : kShort;
        const std::vector<std::uint8_t> message = random.Bytes(random.Below(longest + 1));
        const Case signedCase{openssl::PublicKeyOf(seed), message, openssl::Sign(seed, message)};
        ASSERT_TRUE(IsUsableEd25519Key(signedCase.key)) << HexOf(signedCase.key);
        ASSERT_TRUE(Agreed(signedCase));
        for (int change = 0; change < kChangesOfEach; ++change) {
            ASSERT_FALSE(Agreed(Changed(signedCase, random)));
        }
    }
}

TEST(Ed25519Differential, TheSignerOfTheTestsSignsAsOpenSslDoes) {
    RandomBytes random(3);
    for (int i = 0; i < kKeys; ++i) {
        const auto seed = random.Seed();
        const std::vector<std::uint8_t> message = random.Bytes(random.Below(kShort + 1));
        const MinisignSigner signer(seed);
        ASSERT_EQ(signer.PublicKey().key, openssl::PublicKeyOf(seed)) << HexOf(seed);
        ASSERT_EQ(signer.Sign(message), openssl::Sign(seed, message)) << HexOf(seed);
    }
}

// Any 32 bytes: half of them are no point. Only a second form of a point, or one of small order,
// would be told apart on purpose, and of neither kind are there enough to be met.
TEST(Ed25519Differential, AgreesWithOpenSslOnKeysThatAreAnyBytes) {
    RandomBytes random(4);
    const auto seed = random.Seed();
    for (int i = 0; i < kKeys; ++i) {
        ASSERT_FALSE(Agreed({random.Seed(), {}, openssl::Sign(seed, {})}));
    }
}

/// A point of order eight (its y is the root of a number that RFC 8032 does not name).
constexpr std::string_view kOrderEight =
    "26e8958fc2b227b045c3f489f2ef98f0d5dfac05d3c63339b13802886d53fc05";

/// A signature that fits when the hash is a multiple of eight, and else does not: the key is B and
/// a point of order eight, its secret so is one.
Case WithAPointOfSmallOrderInTheKey(RandomBytes& random) {
    std::array<std::uint8_t, 32> bytes{};
    std::ranges::copy(BytesOfHex(kOrderEight), bytes.begin());
    const CurvePoint small = DecodePoint(bytes).value();
    const Scalar one{{1}};
    Case it;
    it.key = EncodePoint(SumOfMultiples(one, one, small));
    it.message = random.Bytes(random.Below(kShort));
    std::array<std::uint8_t, 64> wide{};
    std::ranges::copy(random.Bytes(wide.size()), wide.begin());
    const Scalar r = ReducedScalar(wide);
    std::ranges::copy(EncodePoint(SumOfMultiples(r, Scalar{}, small)), it.signature.begin());
    Sha512 hash;
    hash.Update(std::span(it.signature).first(32));
    hash.Update(it.key);
    hash.Update(it.message);
    wide = {};
    std::ranges::copy(BytesOf(r.limbs), wide.begin());
    Add(wide, BytesOf(ReducedScalar(hash.Finish()).limbs));
    std::ranges::copy(BytesOf(ReducedScalar(wide).limbs), it.signature.begin() + 32);
    return it;
}

// Whether the factor 8 is applied, and whether the hash is reduced before it is multiplied with the
// key, shows with such keys only.
TEST(Ed25519Differential, AgreesWithOpenSslOnKeysWithAPointOfSmallOrderInThem) {
    RandomBytes random(5);
    int fitting = 0;
    for (int i = 0; i < kKeys; ++i) {
        fitting += Agreed(WithAPointOfSmallOrderInTheKey(random)) ? 1 : 0;
    }
    EXPECT_GT(fitting, kKeys / 16);
    EXPECT_LT(fitting, kKeys / 4);
}

}  // namespace
}  // namespace swiftpatch
