#include "runtime/internal/text_tail.h"

#include <gtest/gtest.h>

namespace swiftpatch {
namespace {

constexpr std::string_view kText = "one\r\ntwo\r\nthree\r\n";  // 5, 5 and 7 bytes.

TEST(TextTail, OfAShortTextIsAllOfIt) {
    EXPECT_EQ(TextTail("", 0), "");
    EXPECT_EQ(TextTail(kText, 17), kText);
    EXPECT_EQ(TextTail(kText, 100), kText);
}

TEST(TextTail, BeginsAtALine) {
    EXPECT_EQ(TextTail(kText, 16), "two\r\nthree\r\n");
    EXPECT_EQ(TextTail(kText, 13), "two\r\nthree\r\n");
    EXPECT_EQ(TextTail(kText, 12), "two\r\nthree\r\n");
    EXPECT_EQ(TextTail(kText, 11), "three\r\n");
    EXPECT_EQ(TextTail(kText, 7), "three\r\n");
}

TEST(TextTail, TakesLineFeedsAndReturnsAloneForPartsOfALine) {
    EXPECT_EQ(TextTail("a\r\nb\nc\rd\r\ne\r\n", 8), "e\r\n");
    EXPECT_EQ(TextTail("\r\nab\r\n", 5), "ab\r\n");
}

TEST(TextTail, OfALineThatIsTooLongIsItsEnd) {
    EXPECT_EQ(TextTail(kText, 6), "hree\r\n");
    EXPECT_EQ(TextTail(kText, 2), "\r\n");
    EXPECT_EQ(TextTail("0123456789", 4), "6789");
    EXPECT_EQ(TextTail(kText, 0), "");
}

}  // namespace
}  // namespace swiftpatch
