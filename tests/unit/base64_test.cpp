#include "signing/base64.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "support/byte_text.h"

namespace swiftpatch {
namespace {

/// The bytes as text, or "refused".
std::string Decoded(std::string_view text) {
    const auto bytes = DecodeBase64(text);
    return bytes ? std::string(bytes->begin(), bytes->end()) : "refused";
}

// RFC 4648, section 10.
TEST(Base64, DecodesTheExamplesOfItsDescription) {
    EXPECT_EQ(Decoded(""), "");
    EXPECT_EQ(Decoded("Zg=="), "f");
    EXPECT_EQ(Decoded("Zm8="), "fo");
    EXPECT_EQ(Decoded("Zm9v"), "foo");
    EXPECT_EQ(Decoded("Zm9vYg=="), "foob");
    EXPECT_EQ(Decoded("Zm9vYmE="), "fooba");
    EXPECT_EQ(Decoded("Zm9vYmFy"), "foobar");
}

TEST(Base64, DecodesEveryByteAtEveryPlace) {
    for (std::size_t length = 0; length < 4; ++length) {
        for (int value = 0; value < 256; ++value) {
            const std::vector<std::uint8_t> bytes(length, static_cast<std::uint8_t>(value));
            EXPECT_EQ(DecodeBase64(EncodeBase64(bytes)), bytes);
        }
    }
}

TEST(Base64, OfAnyOtherLengthThanWholeGroupsIsRefused) {
    for (const char* text : {"Z", "Zg", "Zm8", "Zm9vY", "Zm9vYg=", "Zg=", "Zm9v="}) {
        EXPECT_EQ(Decoded(text), "refused") << text;
    }
}

TEST(Base64, WithPaddingAnywhereButAtTheEndIsRefused) {
    for (const char* text : {"====", "Z===", "Zg==Zg==", "Z=g=", "=Zg=", "Zm=v", "Zm9v===="}) {
        EXPECT_EQ(Decoded(text), "refused") << text;
    }
}

// "Zh==" would be "f" as well for a reader that ignores the bits.
TEST(Base64, WithUnusedBitsSetIsRefused) {
    for (const char* text : {"Zh==", "Zi==", "Zo==", "Zv==", "Zm9=", "Zm+="}) {
        EXPECT_EQ(Decoded(text), "refused") << text;
    }
}

TEST(Base64, WithAnyOtherLetterIsRefused) {
    constexpr std::string_view kLetters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (int value = 0; value < 256; ++value) {
        const char letter = static_cast<char>(value);
        const bool known = kLetters.find(letter) != std::string_view::npos;
        EXPECT_EQ(Decoded(std::string("AA") + letter + "A") != "refused", known) << value;
    }
}

}  // namespace
}  // namespace swiftpatch
