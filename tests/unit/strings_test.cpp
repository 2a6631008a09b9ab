#include "runtime/strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "runtime/runtime_error.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

TEST(StringsReplace, EveryOccurrenceFromTheFirstCharacterOn) {
    EXPECT_EQ(Replace("aXbXc", "X", "--"), "a--b--c");
    EXPECT_EQ(Replace("XX", "X", ""), "");
}

TEST(StringsReplace, MatchesExactlyWithRegardToCase) {
    EXPECT_EQ(Replace("tolvex30.exe TOLVEX30.EXE", "tolvex30.exe", "x"), "x TOLVEX30.EXE");
}

TEST(StringsReplace, WhatAReplacementPutsTogetherStays) {
    EXPECT_EQ(Replace("aabb", "ab", ""), "ab");
    EXPECT_EQ(Replace("a", "a", "aa"), "aa");
}

TEST(StringsReplace, OverlappingMatchesCountOnce) { EXPECT_EQ(Replace("aaa", "aa", "b"), "ba"); }

TEST(StringsReplace, TextWithoutMatchStays) {
    EXPECT_EQ(Replace("abc", "abcd", "x"), "abc");
    EXPECT_EQ(Replace("", "a", "x"), "");
}

TEST(StringsRight, LastCharactersOrAllOfThem) {
    EXPECT_EQ(Right("abcdef", 2), "ef");
    EXPECT_EQ(Right("abc", 3), "abc");
    EXPECT_EQ(Right("abc", 10), "abc");
    EXPECT_EQ(Right("abc", std::numeric_limits<std::int64_t>::max()), "abc");
    EXPECT_EQ(Right("abc", 0), "");
}

TEST(StringsRight, NegativeCountIsError5) {
    try {
        Right("abc", -1);
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 5);
    }
}

TEST(StringsSplit, CutsAtEverySeparator) {
    EXPECT_THAT(Split("3.0.12.5", '.'), ElementsAre("3", "0", "12", "5"));
    EXPECT_THAT(Split("3", '.'), ElementsAre("3"));
}

TEST(StringsSplit, EmptyPartsAreKept) {
    EXPECT_THAT(Split("a,,b", ','), ElementsAre("a", "", "b"));
    EXPECT_THAT(Split("a,", ','), ElementsAre("a", ""));
    EXPECT_THAT(Split(",a", ','), ElementsAre("", "a"));
    EXPECT_THAT(Split(",", ','), ElementsAre("", ""));
}

TEST(StringsSplit, EmptyTextHasNoParts) { EXPECT_THAT(Split("", ','), ElementsAre()); }

TEST(StringsTrimBlanks, BlanksTabsAndLineEndsGoAtBothEnds) {
    EXPECT_EQ(TrimBlanks(" \t\r\na b\r\n\t "), "a b");
    EXPECT_EQ(TrimBlanks(" \t\r\n"), "");
    EXPECT_EQ(TrimBlanks(""), "");
}

TEST(StringsEqualWithoutCase, OnlyAsciiLettersAreTheSame) {
    EXPECT_TRUE(EqualWithoutCase("Content-LENGTH", "content-length"));
    EXPECT_TRUE(EqualWithoutCase("", ""));
    EXPECT_FALSE(EqualWithoutCase("\xC4", "\xE4"));
    EXPECT_FALSE(EqualWithoutCase("[", "{"));
    EXPECT_FALSE(EqualWithoutCase("abc", "ab"));
    EXPECT_FALSE(EqualWithoutCase("ab", "abc"));
}

TEST(StringsZeroPadded, HasAtLeastThatManyDigits) {
    EXPECT_EQ(ZeroPadded(0, 3), "000");
    EXPECT_EQ(ZeroPadded(5, 3), "005");
    EXPECT_EQ(ZeroPadded(12, 2), "12");
    EXPECT_EQ(ZeroPadded(12345, 3), "12345");
    EXPECT_EQ(ZeroPadded(0, 1), "0");
}

TEST(StringsZeroPadded, MinusComesBeforeTheZeros) {
    EXPECT_EQ(ZeroPadded(-5, 2), "-05");
    EXPECT_EQ(ZeroPadded(-25536, 2), "-25536");
    EXPECT_EQ(ZeroPadded(std::numeric_limits<std::int32_t>::min(), 2), "-2147483648");
}

}  // namespace
}  // namespace swiftpatch
