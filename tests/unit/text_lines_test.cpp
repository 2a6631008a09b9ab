#include "runtime/text_lines.h"

#include <gtest/gtest.h>

namespace swiftpatch {
namespace {

TextLines LinesOf(const std::string& text) {
    TextLines lines;
    lines.Set(text);
    return lines;
}

TEST(TextLines, OfNothingAreOneEmptyLine) {
    const TextLines lines;
    EXPECT_EQ(lines.Count(), 1U);
    EXPECT_EQ(lines.Line(0), "");
    EXPECT_EQ(lines.Width(), 0U);
    EXPECT_EQ(lines.LineOf(0), 0U);
    EXPECT_EQ(lines.OffsetAt(0, 5), 0U);
    EXPECT_EQ(lines.Cells(0, 0, 80), "");
}

TEST(TextLines, EndWithCrLfAlone) {
    const TextLines lines = LinesOf("one\r\ntwo\nstill\rtwo\r\n\r\nlast");
    ASSERT_EQ(lines.Count(), 4U);
    EXPECT_EQ(lines.Line(0), "one");
    EXPECT_EQ(lines.Line(1), "two\nstill\rtwo");
    EXPECT_EQ(lines.Line(2), "");
    EXPECT_EQ(lines.Line(3), "last");
}

TEST(TextLines, AfterALastEndIsAnEmptyOne) {
    const TextLines lines = LinesOf("one\r\n");
    ASSERT_EQ(lines.Count(), 2U);
    EXPECT_EQ(lines.Line(1), "");
    EXPECT_EQ(lines.LineOf(5), 1U);
}

TEST(TextLines, AreReplacedWhole) {
    TextLines lines = LinesOf("a long line\r\nanother");
    lines.Set("b");
    EXPECT_EQ(lines.Count(), 1U);
    EXPECT_EQ(lines.Width(), 1U);
    EXPECT_EQ(lines.Text(), "b");
}

TEST(TextLines, AreAsWideAsTheWidestWithItsTabs) {
    EXPECT_EQ(LinesOf("four\r\nsix...\r\nfive.").Width(), 6U);
    EXPECT_EQ(LinesOf("four\r\na\tb").Width(), 9U);
    EXPECT_EQ(LinesOf("12345678\t").Width(), 16U);
}

TEST(TextLines, FindTheLineAndColumnOfACharacter) {
    const TextLines lines = LinesOf("ab\r\nc\td\r\n");
    EXPECT_EQ(lines.LineOf(1), 0U);
    EXPECT_EQ(lines.LineOf(3), 0U);
    EXPECT_EQ(lines.LineOf(4), 1U);
    EXPECT_EQ(lines.ColumnOf(5), 1U);
    EXPECT_EQ(lines.ColumnOf(6), 8U);
    EXPECT_EQ(lines.ColumnOf(7), 9U);
    EXPECT_EQ(lines.ColumnOf(9), 0U);
}

TEST(TextLines, FindTheCharacterAtAColumn) {
    const TextLines lines = LinesOf("ab\r\nc\td\r\n");
    EXPECT_EQ(lines.OffsetAt(0, 0), 0U);
    EXPECT_EQ(lines.OffsetAt(0, 1), 1U);
    EXPECT_EQ(lines.OffsetAt(0, 2), 2U);
    EXPECT_EQ(lines.OffsetAt(0, 99), 2U);
    EXPECT_EQ(lines.OffsetAt(1, 1), 5U);
    EXPECT_EQ(lines.OffsetAt(1, 7), 5U);
    EXPECT_EQ(lines.OffsetAt(1, 8), 6U);
    EXPECT_EQ(lines.OffsetAt(1, 9), 7U);
}

TEST(TextLines, ShowAPartOfALine) {
    const TextLines lines = LinesOf("0123456789");
    EXPECT_EQ(lines.Cells(0, 0, 3), "012");
    EXPECT_EQ(lines.Cells(0, 7, 80), "789");
    EXPECT_EQ(lines.Cells(0, 10, 80), "");
}

TEST(TextLines, ShowTabsAsBlanksUpToTheNextStop) {
    const TextLines lines = LinesOf("a\tb");
    EXPECT_EQ(lines.Cells(0, 0, 80), "a       b");
    EXPECT_EQ(lines.Cells(0, 3, 80), "     b");
    EXPECT_EQ(lines.Cells(0, 3, 5), "");
}

TEST(TextLines, ShowControlCharactersAsBlanks) {
    using namespace std::string_literals;
    EXPECT_EQ(LinesOf("a\0b\nc\x7F\xE4"s).Cells(0, 0, 80), "a b c\x7F\xE4");
}

}  // namespace
}  // namespace swiftpatch
