#include "components/utilities.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

TEST(TrimNull, TextThatStartsWithNulIsEmpty) {
    EXPECT_EQ(TrimNull(std::string_view("\0abc", 4)), "");
}

TEST(TrimNull, TextWithoutNulStaysAsItIs) {
    EXPECT_EQ(TrimNull("C:\\WINDOWS  "), "C:\\WINDOWS  ");
    EXPECT_EQ(TrimNull(""), "");
}

TEST(TrimNull, OnlyThePartBeforeTheFirstNulIsKept) {
    EXPECT_EQ(TrimNull(std::string_view("ab\0cd\0ef", 8)), "ab");
}

TEST(AddBackslash, TrailingBlanksGiveWayToTheBackslash) {
    EXPECT_EQ(WithBackslash("C:\\TEMP   "), "C:\\TEMP\\");
    EXPECT_EQ(WithBackslash("C:\\TEMP"), "C:\\TEMP\\");
}

TEST(AddBackslash, PathsThatEndInASeparatorStay) {
    EXPECT_EQ(WithBackslash("C:/TEMP/"), "C:/TEMP/");
    EXPECT_EQ(WithBackslash("C:\\TEMP\\"), "C:\\TEMP\\");
}

TEST(AddBackslash, BlanksAfterASeparatorGo) {
    EXPECT_EQ(WithBackslash("C:\\TEMP\\  "), "C:\\TEMP\\");
    EXPECT_EQ(WithBackslash("C:/TEMP/ "), "C:/TEMP/");
}

TEST(AddBackslash, LeadingAndInnerBlanksStay) {
    EXPECT_EQ(WithBackslash(" C:\\My Files"), " C:\\My Files\\");
}

TEST(AddBackslash, OtherTrailingWhiteSpaceStays) {
    EXPECT_EQ(WithBackslash("C:\\TEMP\t"), "C:\\TEMP\t\\");
}

TEST(AddBackslash, EmptyPathBecomesABackslash) {
    EXPECT_EQ(WithBackslash(""), "\\");
    EXPECT_EQ(WithBackslash("  "), "\\");
}

class Directories : public testing::Test {
protected:
    headless::World world;
};

TEST_F(Directories, EndInABackslash) {
    EXPECT_EQ(GetWindowsDir(), "C:\\WINDOWS\\");
    EXPECT_EQ(GetSystemDir(), "C:\\WINDOWS\\SYSTEM32\\");
}

TEST_F(Directories, RootGetsNoSecondBackslash) {
    world.machine.windowsDirectory = "D:\\";
    EXPECT_EQ(GetWindowsDir(), "D:\\");
}

TEST_F(Directories, FailedLookUpGivesAnEmptyTextWithoutBackslash) {
    world.machine.windowsDirectory = "";
    world.machine.systemDirectory = "";
    EXPECT_EQ(GetWindowsDir(), "");
    EXPECT_EQ(GetSystemDir(), "");
}

TEST_F(Directories, NameOf254CharactersFits) {
    world.machine.systemDirectory = "C:\\" + std::string(251, 's');
    EXPECT_EQ(GetSystemDir(), "C:\\" + std::string(251, 's') + "\\");
}

class TopMost : public testing::Test {
protected:
    headless::World world;
};

TEST_F(TopMost, TruePutsTheWindowOnTopAndGivesThePlatformsResult) {
    world.machine.topMostResult = 7;
    EXPECT_EQ(SetTopMost(1234, kTrue), 7);
    EXPECT_THAT(world.trace.Lines(), ElementsAre("SetWindowPos 1234 -1 0 0 0 0 3"));
}

TEST_F(TopMost, FailureToSwitchOnGivesZero) {
    world.machine.topMostResult = 0;
    EXPECT_EQ(SetTopMost(1234, kTrue), 0);
}

TEST_F(TopMost, FalseSwitchesOffAndGivesZeroWhateverThePlatformSaid) {
    world.machine.topMostResult = 7;
    EXPECT_EQ(SetTopMost(1234, kFalse), 0);
    EXPECT_THAT(world.trace.Lines(), ElementsAre("SetWindowPos 1234 -2 0 0 0 0 3"));
}

TEST_F(TopMost, FlagThatHasNotAllBitsSetSwitchesOff) {
    for (const VariantBool flag : {VariantBool{1}, VariantBool{-2}, VariantBool{32767}}) {
        world.trace.Clear();
        EXPECT_EQ(SetTopMost(9, flag), 0);
        EXPECT_THAT(world.trace.Lines(), ElementsAre("SetWindowPos 9 -2 0 0 0 0 3"));
    }
}

TEST(FormatDateMDY, MonthAndDayHaveNoLeadingZerosAndTheYearIsWhole) {
    EXPECT_THAT(FormatDateMDY(MakeDateTime({2014, 3, 5, 16, 7, 9})),
                Optional(Eq("3/5/2014 4:07 PM")));
    EXPECT_THAT(FormatDateMDY(MakeDateTime({1999, 12, 31, 9, 30, 0})),
                Optional(Eq("12/31/1999 9:30 AM")));
}

TEST(FormatDateMDY, MidnightAndNoonAreTwelve) {
    EXPECT_THAT(FormatDateMDY(MakeDateTime({2014, 3, 5})), Optional(Eq("3/5/2014 12:00 AM")));
    EXPECT_THAT(FormatDateMDY(MakeDateTime({2014, 3, 5, 12, 5, 0})),
                Optional(Eq("3/5/2014 12:05 PM")));
}

TEST(FormatDateMDY, TextThatIsADateIsFormatted) {
    EXPECT_THAT(FormatDateMDY(std::string("15 Nov 1994 08:12:31")),
                Optional(Eq("11/15/1994 8:12 AM")));
}

TEST(FormatDateMDY, WhatIsNoDateGivesNothingAndNoEmptyText) {
    EXPECT_EQ(FormatDateMDY(std::monostate()), std::nullopt);
    EXPECT_EQ(FormatDateMDY(std::string()), std::nullopt);
    EXPECT_EQ(FormatDateMDY(std::string("12345")), std::nullopt);
    EXPECT_EQ(FormatDateMDY(std::string("no date")), std::nullopt);
}

}  // namespace
}  // namespace swiftpatch
