#include "signing/signing_keys.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "support/byte_text.h"
#include "support/minisign_signer.h"

namespace swiftpatch {
namespace {

std::string KeyNamed(std::string_view name) { return MinisignSigner(name).PublicKeyText(); }

/// The text of a key whose 42 bytes are these.
std::string KeyText(std::string_view algorithm, std::string_view keyInHex) {
    return EncodeBase64(AsBytes(std::string(algorithm) + "12345678" + [keyInHex] {
        const auto bytes = BytesOfHex(keyInHex);
        return std::string(bytes.begin(), bytes.end());
    }()));
}

/// How many keys there are in the text; -1 for a text that is refused.
int Count(std::string_view text) {
    const auto keys = ParseSigningKeys(text);
    return keys ? static_cast<int>(keys->size()) : -1;
}

TEST(SigningKeys, OneToFourAreReadInTheirOrder) {
    const std::vector<std::string> names = {"work", "spare", "next", "spare of the next"};
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        text += (i == 0 ? "" : " ") + KeyNamed(names[i]);
        const auto keys = ParseSigningKeys(text);
        ASSERT_TRUE(keys.has_value()) << text;
        ASSERT_EQ(keys->size(), i + 1);
        EXPECT_EQ(keys->back().key, MinisignSigner(names[i]).PublicKey().key);
        EXPECT_EQ(keys->back().number, MinisignSigner(names[i]).PublicKey().number);
        EXPECT_EQ(keys->front().key, MinisignSigner("work").PublicKey().key);
    }
}

TEST(SigningKeys, FiveAreRefused) {
    EXPECT_EQ(Count(KeyNamed("1") + " " + KeyNamed("2") + " " + KeyNamed("3") + " " +
                    KeyNamed("4") + " " + KeyNamed("5")),
              -1);
}

TEST(SigningKeys, NoneIsRefused) {
    EXPECT_EQ(Count(""), -1);
    EXPECT_EQ(Count(" "), -1);
}

TEST(SigningKeys, AnyOtherSpaceThanOneBlankBetweenTwoIsRefused) {
    const std::string work = KeyNamed("work");
    const std::string spare = KeyNamed("spare");
    EXPECT_EQ(Count(work + " " + spare), 2);
    for (const std::string& text :
         {" " + work, work + " ", work + "  " + spare, work + "\t" + spare, work + "," + spare,
          work + spare, work + "\r", work + "\n", work + "\r\n" + spare,
          work + std::string(1, '\0')}) {
        EXPECT_EQ(Count(text), -1) << text;
    }
}

TEST(SigningKeys, OneThatIsNoneRefusesAllOfThem) {
    const std::string work = KeyNamed("work");
    EXPECT_EQ(Count(work + " RW"), -1);
    EXPECT_EQ(Count("RW " + work), -1);
    EXPECT_EQ(Count(work + " " + work.substr(1)), -1);
}

TEST(SigningKeys, CutOrLengthenedAnywhereIsRefused) {
    const std::string work = KeyNamed("work");
    ASSERT_EQ(work.size(), 56U);
    for (std::size_t length = 0; length < work.size(); ++length) {
        EXPECT_EQ(Count(work.substr(0, length)), -1) << length;
    }
    for (const char* more : {"A", "=", "==", "AAAA"}) {
        EXPECT_EQ(Count(work + more), -1) << more;
    }
}

TEST(SigningKeys, OfAnotherAlgorithmIsRefused) {
    const std::string key = HexOf(MinisignSigner("work").PublicKey().key);
    EXPECT_EQ(Count(KeyText("Ed", key)), 1);
    for (const char* algorithm : {"ED", "ed", "eD", "Ee", "Fd"}) {
        EXPECT_EQ(Count(KeyText(algorithm, key)), -1) << algorithm;
    }
}

// The neutral point, a point of order two, the modulus, and no point at all.
TEST(SigningKeys, WithWhichNothingCouldBeSignedIsRefused) {
    EXPECT_EQ(Count(KeyText("Ed", "01" + std::string(62, '0'))), -1);
    EXPECT_EQ(Count(KeyText("Ed", "ec" + std::string(60, 'f') + "7f")), -1);
    EXPECT_EQ(Count(KeyText("Ed", "ed" + std::string(60, 'f') + "7f")), -1);
    EXPECT_EQ(Count(KeyText("Ed", "02" + std::string(62, '0'))), -1);
}

}  // namespace
}  // namespace swiftpatch
