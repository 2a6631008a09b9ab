#include "signing/ed25519.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "signing/curve_point.h"
#include "signing/group_scalar.h"
#include "support/byte_text.h"
#include "support/minisign_signer.h"

namespace swiftpatch {
namespace {

struct Vector {
    std::string_view key;
    std::string_view message;
    std::string_view signature;
};

constexpr std::string_view kLongMessage =
    "08b8b2b733424243760fe426a4b54908632110a66c2f6591eabd3345e3e4eb98fa6e264bf09efe12"
    "ee50f8f54e9f77b1e355f6c50544e23fb1433ddf73be84d879de7c0046dc4996d9e773f4bc9efe57"
    "38829adb26c81b37c93a1b270b20329d658675fc6ea534e0810a4432826bf58c941efb65d57a338b"
    "bd2e26640f89ffbc1a858efcb8550ee3a5e1998bd177e93a7363c344fe6b199ee5d02e82d522c4fe"
    "ba15452f80288a821a579116ec6dad2b3b310da903401aa62100ab5d1a36553e06203b33890cc9b8"
    "32f79ef80560ccb9a39ce767967ed628c6ad573cb116dbefefd75499da96bd68a8a97b928a8bbc10"
    "3b6621fcde2beca1231d206be6cd9ec7aff6f6c94fcd7204ed3455c68c83f4a41da4af2b74ef5c53"
    "f1d8ac70bdcb7ed185ce81bd84359d44254d95629e9855a94a7c1958d1f8ada5d0532ed8a5aa3fb2"
    "d17ba70eb6248e594e1a2297acbbb39d502f1a8c6eb6f1ce22b3de1a1f40cc24554119a831a9aad6"
    "079cad88425de6bde1a9187ebb6092cf67bf2b13fd65f27088d78b7e883c8759d2c4f5c65adb7553"
    "878ad575f9fad878e80a0c9ba63bcbcc2732e69485bbc9c90bfbd62481d9089beccf80cfe2df16a2"
    "cf65bd92dd597b0707e0917af48bbb75fed413d238f5555a7a569d80c3414a8d0859dc65a46128ba"
    "b27af87a71314f318c782b23ebfe808b82b0ce26401d2e22f04d83d1255dc51addd3b75a2b1ae078"
    "4504df543af8969be3ea7082ff7fc9888c144da2af58429ec96031dbcad3dad9af0dcbaaaf268cb8"
    "fcffead94f3c7ca495e056a9b47acdb751fb73e666c6c655ade8297297d07ad1ba5e43f1bca32301"
    "651339e22904cc8c42f58c30c04aafdb038dda0847dd988dcda6f3bfd15c4b4c4525004aa06eeff8"
    "ca61783aacec57fb3d1f92b0fe2fd1a85f6724517b65e614ad6808d6f6ee34dff7310fdc82aebfd9"
    "04b01e1dc54b2927094b2db68d6f903b68401adebf5a7e08d78ff4ef5d63653a65040cf9bfd4aca7"
    "984a74d37145986780fc0b16ac451649de6188a7dbdf191f64b5fc5e2ab47b57f7f7276cd419c17a"
    "3ca8e1b939ae49e488acba6b965610b5480109c8b17b80e1b7b750dfc7598d5d5011fd2dcc5600a3"
    "2ef5b52a1ecc820e308aa342721aac0943bf6686b64b2579376504ccc493d97e6aed3fb0f9cd71a4"
    "3dd497f01f17c0e2cb3797aa2a2f256656168e6c496afc5fb93246f6b1116398a346f1a641f3b041"
    "e989f7914f90cc2c7fff357876e506b50d334ba77c225bc307ba537152f3f1610e4eafe595f6d9d9"
    "0d11faa933a15ef1369546868a7f3a45a96768d40fd9d03412c091c6315cf4fde7cb68606937380d"
    "b2eaaa707b4c4185c32eddcdd306705e4dc1ffc872eeee475a64dfac86aba41c0618983f8741c5ef"
    "68d3a101e8a3b8cac60c905c15fc910840b94c00a0b9d0";

constexpr std::string_view kHashOfAbc =
    "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a"
    "2192992a274fc1a836ba3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f";

// RFC 8032, section 7.1.
constexpr std::array<Vector, 5> kVectors = {{
    {"d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a", "",
     "e5564300c360ac729086e2cc806e828a84877f1eb8e5d974d873e06522490155"
     "5fb8821590a33bacc61e39701cf9b46bd25bf5f0595bbe24655141438e7a100b"},
    {"3d4017c3e843895a92b70aa74d1b7ebc9c982ccf2ec4968cc0cd55f12af4660c", "72",
     "92a009a9f0d4cab8720e820b5f642540a2b27b5416503f8fb3762223ebdb69da"
     "085ac1e43e15996e458f3613d0f11d8c387b2eaeb4302aeeb00d291612bb0c00"},
    {"fc51cd8e6218a1a38da47ed00230f0580816ed13ba3303ac5deb911548908025", "af82",
     "6291d657deec24024827e69c3abe01a30ce548a284743a445e3680d7db5ac3ac"
     "18ff9b538d16f290ae67f760984dc6594a7c15e9716ed28dc027beceea1ec40a"},
    {"278117fc144c72340f67d0f2316e8386ceffbf2b2428c9c51fef7c597f1d426e", kLongMessage,
     "0aab4c900501b3e24d7cdf4663326a3a87df5e4843b2cbdb67cbf6e460fec350"
     "aa5371b1508f9f4528ecea23c436d94b5e8fcd4f681e30a6ac00a9704a188a03"},
    {"ec172b93ad5e563bf4932c70e1245034c35467ef2efd4d64ebf819683467e2bf", kHashOfAbc,
     "dc2a4459e7369633a52b1bf277839a00201009a3efbf3ecb69bea2186c26b589"
     "09351fc9ac90b3ecfdfbc7c66431e0303dca179c138ac17ad9bef1177331a704"},
}};

// The least significant byte first.
constexpr std::string_view kOrder =
    "edd3f55c1a631258d69cf7a2def9de1400000000000000000000000000000010";
constexpr std::string_view kOrderLessOne =
    "ecd3f55c1a631258d69cf7a2def9de1400000000000000000000000000000010";
constexpr std::string_view kGreatestNumberReduced =
    "000f9c44e31106a447938568a71b0ed065bef517d273ecce3d9a307c1b419903";
constexpr std::array<std::string_view, 8> kSmallOrderKeys = {
    "0000000000000000000000000000000000000000000000000000000000000000",
    "0000000000000000000000000000000000000000000000000000000000000080",
    "0100000000000000000000000000000000000000000000000000000000000000",
    "26e8958fc2b227b045c3f489f2ef98f0d5dfac05d3c63339b13802886d53fc05",
    "26e8958fc2b227b045c3f489f2ef98f0d5dfac05d3c63339b13802886d53fc85",
    "c7176a703d4dd84fba3c0b760d10670f2a2053fa2c39ccc64ec7fd7792ac037a",
    "c7176a703d4dd84fba3c0b760d10670f2a2053fa2c39ccc64ec7fd7792ac03fa",
    "ecffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff7f"};

// From 2^255 - 19 on, or with a sign for x = 0.
constexpr std::array<std::string_view, 8> kSecondForms = {
    "edffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff7f",
    "eeffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff7f",
    "edffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff",
    "eeffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff",
    "0100000000000000000000000000000000000000000000000000000000000080",
    "ecffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff",
    "f0ffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff7f",
    "f1ffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff7f"};
constexpr std::array<std::string_view, 4> kNoPoints = {
    "0200000000000000000000000000000000000000000000000000000000000000",
    "0700000000000000000000000000000000000000000000000000000000000000",
    "0800000000000000000000000000000000000000000000000000000000000000",
    "ffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff"};

Ed25519Key KeyOf(std::string_view digits) {
    Ed25519Key key{};
    std::ranges::copy(BytesOfHex(digits), key.begin());
    return key;
}

Ed25519Signature SignatureOf(std::string_view digits) {
    Ed25519Signature signature{};
    std::ranges::copy(BytesOfHex(digits), signature.begin());
    return signature;
}

bool Verify(const Vector& vector) {
    return VerifyEd25519(KeyOf(vector.key), BytesOfHex(vector.message),
                         SignatureOf(vector.signature));
}

/// `number` and `summand`, 32 bytes each, the least significant first.
std::string SumOf(std::string_view number, std::string_view summand) {
    std::vector<std::uint8_t> bytes = BytesOfHex(number);
    const std::vector<std::uint8_t> more = BytesOfHex(summand);
    unsigned carry = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        carry += unsigned{bytes[i]} + more[i];
        bytes[i] = static_cast<std::uint8_t>(carry);
        carry >>= 8;
    }
    return HexOf(bytes);
}

TEST(Ed25519, AcceptsTheVectorsOfItsDescription) {
    for (const Vector& vector : kVectors) {
        EXPECT_TRUE(IsUsableEd25519Key(KeyOf(vector.key))) << vector.key;
        EXPECT_TRUE(Verify(vector)) << vector.key;
    }
}

TEST(Ed25519, RefusesASignatureWithAnyBitChanged) {
    const Vector& vector = kVectors[2];
    for (std::size_t bit = 0; bit < 512; ++bit) {
        Ed25519Signature signature = SignatureOf(vector.signature);
        signature[bit / 8] ^= static_cast<std::uint8_t>(1 << bit % 8);
        EXPECT_FALSE(VerifyEd25519(KeyOf(vector.key), BytesOfHex(vector.message), signature))
            << bit;
    }
}

TEST(Ed25519, RefusesAKeyWithAnyBitChanged) {
    const Vector& vector = kVectors[2];
    for (std::size_t bit = 0; bit < 256; ++bit) {
        Ed25519Key key = KeyOf(vector.key);
        key[bit / 8] ^= static_cast<std::uint8_t>(1 << bit % 8);
        EXPECT_FALSE(VerifyEd25519(key, BytesOfHex(vector.message), SignatureOf(vector.signature)))
            << bit;
    }
}

TEST(Ed25519, RefusesAnotherMessage) {
    const Vector& vector = kVectors[2];
    for (const std::string_view message : {"", "af", "af82ff", "ae82", "af83"}) {
        EXPECT_FALSE(Verify({vector.key, message, vector.signature})) << message;
    }
}

// s and s + L are the same multiple of the base point, which is why anybody can write a signature
// in another form.
TEST(Ed25519, RefusesANumberThatIsNotBelowTheOrder) {
    for (const Vector& vector : kVectors) {
        std::string s(vector.signature.substr(64));
        // As often as it still fits into 32 bytes.
        for (int times = 1; times <= 14; ++times) {
            s = SumOf(s, kOrder);
            const std::string signature = std::string(vector.signature.substr(0, 64)) + s;
            EXPECT_FALSE(Verify({vector.key, vector.message, signature})) << signature;
        }
    }
    EXPECT_FALSE(ScalarOf(KeyOf(kOrder)).has_value());
    EXPECT_TRUE(ScalarOf(KeyOf(kOrderLessOne)).has_value());
}

TEST(Ed25519, RefusesKeysOfSmallOrder) {
    for (const std::string_view key : kSmallOrderKeys) {
        EXPECT_TRUE(DecodePoint(KeyOf(key)).has_value()) << key;
        EXPECT_FALSE(IsUsableEd25519Key(KeyOf(key))) << key;
    }
}

// [0]B - [k]A is the neutral point for A the neutral point, whatever the message.
TEST(Ed25519, RefusesWhatAKeyOfSmallOrderWouldFit) {
    const std::string neutral = "01" + std::string(62, '0');
    EXPECT_FALSE(Verify({neutral, "72", neutral + std::string(64, '0')}));
}

TEST(Ed25519, RefusesASecondFormOfAKey) {
    for (const std::string_view key : kSecondForms) {
        EXPECT_FALSE(DecodePoint(KeyOf(key)).has_value()) << key;
        EXPECT_FALSE(IsUsableEd25519Key(KeyOf(key))) << key;
    }
}

TEST(Ed25519, RefusesWhatIsNoPointOfTheCurve) {
    for (const std::string_view key : kNoPoints) {
        EXPECT_FALSE(IsUsableEd25519Key(KeyOf(key))) << key;
        EXPECT_FALSE(Verify({key, kVectors[1].message, kVectors[1].signature})) << key;
    }
}

TEST(Ed25519, APointIsReadAndWrittenInTheSameForm) {
    for (const Vector& vector : kVectors) {
        EXPECT_EQ(HexOf(EncodePoint(DecodePoint(KeyOf(vector.key)).value())), vector.key);
    }
}

TEST(Ed25519, NumbersAreReducedByTheOrder) {
    const auto reduced = [](const std::string& digits) {
        std::array<std::uint8_t, 64> bytes{};
        std::ranges::copy(BytesOfHex(digits), bytes.begin());
        return HexOf(BytesOf(ReducedScalar(bytes).limbs));
    };
    EXPECT_EQ(reduced(std::string(kOrder)), std::string(64, '0'));
    EXPECT_EQ(reduced(std::string(kOrderLessOne)), kOrderLessOne);
    EXPECT_EQ(reduced(std::string(128, 'f')), kGreatestNumberReduced);
}

// The signer of the tests, which is built on the same arithmetic, has to sign as the RFC does.
TEST(Ed25519, TheSignerOfTheTestsMakesTheVectors) {
    constexpr std::array<std::string_view, 2> kSecrets = {
        "4ccd089b28ff96da9db6c346ec114e0f5b8a319f35aba624da8cf6ed4fb8a6fb",
        "c5aa8df43f9f837bedb7442f31dcb7b166d38535076f094b85ce3a2e0b4458f7"};
    for (std::size_t i = 0; i < kSecrets.size(); ++i) {
        const Vector& vector = kVectors[i + 1];
        const MinisignSigner signer(KeyOf(kSecrets[i]));
        EXPECT_EQ(HexOf(signer.PublicKey().key), vector.key);
        EXPECT_EQ(HexOf(signer.Sign(BytesOfHex(vector.message))), vector.signature);
    }
}

}  // namespace
}  // namespace swiftpatch
