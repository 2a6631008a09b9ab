#include "components/utilities.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "runtime/headless/code_page.h"
#include "runtime/headless/world.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;
using testing::Eq;
using testing::Optional;

std::string WithBackslash(std::string path) {
    AddBackslash(path);
    return path;
}

TEST(UtilitiesTrimNull, TextThatStartsWithNulIsEmpty) {
    EXPECT_EQ(TrimNull(std::string_view("\0abc", 4)), "");
}

TEST(UtilitiesTrimNull, TextWithoutNulStaysAsItIs) {
    EXPECT_EQ(TrimNull("C:\\WINDOWS  "), "C:\\WINDOWS  ");
    EXPECT_EQ(TrimNull(""), "");
}

TEST(UtilitiesTrimNull, OnlyThePartBeforeTheFirstNulIsKept) {
    EXPECT_EQ(TrimNull(std::string_view("ab\0cd\0ef", 8)), "ab");
}

TEST(UtilitiesAddBackslash, TrailingBlanksGiveWayToTheBackslash) {
    EXPECT_EQ(WithBackslash("C:\\TEMP   "), "C:\\TEMP\\");
    EXPECT_EQ(WithBackslash("C:\\TEMP"), "C:\\TEMP\\");
}

TEST(UtilitiesAddBackslash, PathsThatEndInASeparatorStay) {
    EXPECT_EQ(WithBackslash("C:/TEMP/"), "C:/TEMP/");
    EXPECT_EQ(WithBackslash("C:\\TEMP\\"), "C:\\TEMP\\");
}

TEST(UtilitiesAddBackslash, BlanksAfterASeparatorGo) {
    EXPECT_EQ(WithBackslash("C:\\TEMP\\  "), "C:\\TEMP\\");
    EXPECT_EQ(WithBackslash("C:/TEMP/ "), "C:/TEMP/");
}

TEST(UtilitiesAddBackslash, LeadingAndInnerBlanksStay) {
    EXPECT_EQ(WithBackslash(" C:\\My Files"), " C:\\My Files\\");
}

TEST(UtilitiesAddBackslash, OtherTrailingWhiteSpaceStays) {
    EXPECT_EQ(WithBackslash("C:\\TEMP\t"), "C:\\TEMP\t\\");
}

TEST(UtilitiesAddBackslash, CharacterWhoseSecondByteIsOneGetsABackslashAllTheSame) {
    const headless::CodePage japanese(932);
    EXPECT_EQ(WithBackslash("C:\\\x83\\"), "C:\\\x83\\\\");
    EXPECT_EQ(WithBackslash("C:\\\x83\\\\"), "C:\\\x83\\\\");
}

TEST(UtilitiesAddBackslash, EmptyPathBecomesABackslash) {
    EXPECT_EQ(WithBackslash(""), "\\");
    EXPECT_EQ(WithBackslash("  "), "\\");
}

class UtilitiesDirectories : public testing::Test {
protected:
    headless::World world;
};

TEST_F(UtilitiesDirectories, EndInABackslash) {
    EXPECT_EQ(GetWindowsDir(), "C:\\WINDOWS\\");
    EXPECT_EQ(GetSystemDir(), "C:\\WINDOWS\\SYSTEM32\\");
}

TEST_F(UtilitiesDirectories, RootGetsNoSecondBackslash) {
    world.machine.windowsDirectory = "D:\\";
    EXPECT_EQ(GetWindowsDir(), "D:\\");
}

TEST_F(UtilitiesDirectories, FailedLookUpGivesAnEmptyTextWithoutBackslash) {
    world.machine.windowsDirectory = "";
    world.machine.systemDirectory = "";
    EXPECT_EQ(GetWindowsDir(), "");
    EXPECT_EQ(GetSystemDir(), "");
}

TEST_F(UtilitiesDirectories, NameOf254CharactersFits) {
    world.machine.systemDirectory = "C:\\" + std::string(251, 's');
    EXPECT_EQ(GetSystemDir(), "C:\\" + std::string(251, 's') + "\\");
}

class UtilitiesTopMost : public testing::Test {
protected:
    headless::World world;
};

TEST_F(UtilitiesTopMost, TruePutsTheWindowOnTopAndGivesThePlatformsResult) {
    world.machine.topMostResult = 7;
    EXPECT_EQ(SetTopMost(1234, kTrue), 7);
    EXPECT_THAT(world.trace.Lines(), ElementsAre("SetWindowPos 1234 -1 0 0 0 0 3"));
}

TEST_F(UtilitiesTopMost, FailureToSwitchOnGivesZero) {
    world.machine.topMostResult = 0;
    EXPECT_EQ(SetTopMost(1234, kTrue), 0);
}

TEST_F(UtilitiesTopMost, FalseSwitchesOffAndGivesZeroWhateverThePlatformSaid) {
    world.machine.topMostResult = 7;
    EXPECT_EQ(SetTopMost(1234, kFalse), 0);
    EXPECT_THAT(world.trace.Lines(), ElementsAre("SetWindowPos 1234 -2 0 0 0 0 3"));
}

TEST_F(UtilitiesTopMost, FlagThatHasNotAllBitsSetSwitchesOff) {
    for (const VariantBool flag : {VariantBool{1}, VariantBool{-2}, VariantBool{32767}}) {
        world.trace.Clear();
        EXPECT_EQ(SetTopMost(9, flag), 0);
        EXPECT_THAT(world.trace.Lines(), ElementsAre("SetWindowPos 9 -2 0 0 0 0 3"));
    }
}

TEST(UtilitiesFormatDateMDY, MonthAndDayHaveNoLeadingZerosAndTheYearIsWhole) {
    EXPECT_THAT(FormatDateMDY(MakeDateTime({2014, 3, 5, 16, 7, 9})),
                Optional(Eq("3/5/2014 4:07 PM")));
    EXPECT_THAT(FormatDateMDY(MakeDateTime({1999, 12, 31, 9, 30, 0})),
                Optional(Eq("12/31/1999 9:30 AM")));
}

TEST(UtilitiesFormatDateMDY, MidnightAndNoonAreTwelve) {
    EXPECT_THAT(FormatDateMDY(MakeDateTime({2014, 3, 5})), Optional(Eq("3/5/2014 12:00 AM")));
    EXPECT_THAT(FormatDateMDY(MakeDateTime({2014, 3, 5, 12, 5, 0})),
                Optional(Eq("3/5/2014 12:05 PM")));
}

TEST(UtilitiesFormatDateMDY, TextThatIsADateIsFormatted) {
    EXPECT_THAT(FormatDateMDY(std::string("15 Nov 1994 08:12:31")),
                Optional(Eq("11/15/1994 8:12 AM")));
}

TEST(UtilitiesFormatDateMDY, WhatIsNoDateGivesNothingAndNoEmptyText) {
    EXPECT_EQ(FormatDateMDY(std::monostate()), std::nullopt);
    EXPECT_EQ(FormatDateMDY(std::string()), std::nullopt);
    EXPECT_EQ(FormatDateMDY(std::string("12345")), std::nullopt);
    EXPECT_EQ(FormatDateMDY(std::string("no date")), std::nullopt);
}

}  // namespace
}  // namespace swiftpatch
