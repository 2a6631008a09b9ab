#include "runtime/datetime.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace swiftpatch {
namespace {

using testing::Eq;
using testing::Optional;

std::string Written(DateTime time) {
    const DateParts parts = PartsOf(time);
    return std::to_string(parts.year) + "-" + std::to_string(parts.month) + "-" +
           std::to_string(parts.day) + " " + std::to_string(parts.hour) + ":" +
           std::to_string(parts.minute) + ":" + std::to_string(parts.second);
}

/// "none" for a text that is no date.
std::string Parsed(std::string_view text) {
    const std::optional<DateTime> time = ParseDateTime(text);
    return time ? Written(*time) : "none";
}

TEST(DateTimeMake, PutsTogetherWhatPartsOfTakesApart) {
    EXPECT_EQ(Written(MakeDateTime({2026, 3, 10, 23, 59, 58})), "2026-3-10 23:59:58");
    EXPECT_EQ(Written(MakeDateTime({1899, 12, 30})), "1899-12-30 0:0:0");
    EXPECT_EQ(Written(MakeDateTime({2024, 2, 29, 1, 2, 3})), "2024-2-29 1:2:3");
}

TEST(DateTimeMake, PartsBeyondTheirRangeCarryOver) {
    EXPECT_EQ(Written(MakeDateTime({2026, 3, 10, 10, 0, 65})), "2026-3-10 10:1:5");
    EXPECT_EQ(Written(MakeDateTime({2026, 3, 10, 23, 59, 60})), "2026-3-11 0:0:0");
    EXPECT_EQ(Written(MakeDateTime({2026, 12, 31, 24, 0, 0})), "2027-1-1 0:0:0");
    EXPECT_EQ(Written(MakeDateTime({2026, 2, 30})), "2026-3-2 0:0:0");
    EXPECT_EQ(Written(MakeDateTime({2026, 3, 1, 0, 0, -1})), "2026-2-28 23:59:59");
    EXPECT_EQ(Written(MakeDateTime({2026, 13, 1})), "2027-1-1 0:0:0");
    EXPECT_EQ(Written(MakeDateTime({2026, 0, 1})), "2025-12-1 0:0:0");
}

TEST(DateTimeMinutesBetween, CountsMinuteBoundaries) {
    const DateTime time = MakeDateTime({2026, 3, 10, 10, 0, 59});
    EXPECT_EQ(MinutesBetween(time, MakeDateTime({2026, 3, 10, 10, 0, 59})), 0);
    EXPECT_EQ(MinutesBetween(time, MakeDateTime({2026, 3, 10, 10, 1, 0})), 1);
    EXPECT_EQ(MinutesBetween(MakeDateTime({2026, 3, 10, 10, 0, 0}), time), 0);
    EXPECT_EQ(MinutesBetween(time, MakeDateTime({2026, 3, 11, 10, 0, 0})), 1440);
}

TEST(DateTimeMinutesBetween, IsNegativeBackwards) {
    EXPECT_EQ(MinutesBetween(MakeDateTime({2026, 3, 10, 10, 1, 0}),
                             MakeDateTime({2026, 3, 10, 10, 0, 59})),
              -1);
    EXPECT_EQ(MinutesBetween(MakeDateTime({2026, 1, 1}), MakeDateTime({2025, 12, 31})), -1440);
    EXPECT_EQ(MinutesBetween(MakeDateTime({1960, 1, 1, 0, 0, 30}),
                             MakeDateTime({1959, 12, 31, 23, 59, 30})),
              -1);
}

TEST(DateTimeAddMinutes, MovesInBothDirections) {
    EXPECT_EQ(Written(AddMinutes(MakeDateTime({2026, 2, 28, 23, 30, 7}), 90)), "2026-3-1 1:0:7");
    EXPECT_EQ(Written(AddMinutes(MakeDateTime({2026, 1, 1, 0, 30, 0}), -60)), "2025-12-31 23:30:0");
}

TEST(DateTimeFormatTime12, HourHasNoLeadingZeroAndMinutesHaveTwoDigits) {
    EXPECT_EQ(FormatTime12(MakeDateTime({2026, 3, 10, 0, 0, 0})), "12:00 AM");
    EXPECT_EQ(FormatTime12(MakeDateTime({2026, 3, 10, 0, 59, 59})), "12:59 AM");
    EXPECT_EQ(FormatTime12(MakeDateTime({2026, 3, 10, 1, 5, 0})), "1:05 AM");
    EXPECT_EQ(FormatTime12(MakeDateTime({2026, 3, 10, 11, 59, 0})), "11:59 AM");
    EXPECT_EQ(FormatTime12(MakeDateTime({2026, 3, 10, 12, 0, 0})), "12:00 PM");
    EXPECT_EQ(FormatTime12(MakeDateTime({2026, 3, 10, 13, 7, 0})), "1:07 PM");
    EXPECT_EQ(FormatTime12(MakeDateTime({2026, 3, 10, 23, 30, 0})), "11:30 PM");
}

TEST(DateTimeFormatLongDate, MonthHasThreeLettersAndTheDayTwoDigits) {
    EXPECT_EQ(FormatLongDate(MakeDateTime({2026, 1, 1})), "Jan 01, 2026");
    EXPECT_EQ(FormatLongDate(MakeDateTime({2026, 9, 25})), "Sep 25, 2026");
    EXPECT_EQ(FormatLongDate(MakeDateTime({1999, 12, 31})), "Dec 31, 1999");
}

TEST(DateTimeParse, DayMonthNameYear) {
    EXPECT_EQ(Parsed("15 Nov 1994 08:12:31"), "1994-11-15 8:12:31");
    EXPECT_EQ(Parsed("15-Nov-1994"), "1994-11-15 0:0:0");
    EXPECT_EQ(Parsed("5 NOVEMBER 1994"), "1994-11-5 0:0:0");
    EXPECT_EQ(Parsed("05 may 2026 1:05"), "2026-5-5 1:5:0");
    EXPECT_EQ(Parsed("  15 Nov 1994  "), "1994-11-15 0:0:0");
}

TEST(DateTimeParse, MonthNameDayYear) {
    EXPECT_EQ(Parsed("Nov 15, 1994"), "1994-11-15 0:0:0");
    EXPECT_EQ(Parsed("November 15 1994 8:12"), "1994-11-15 8:12:0");
}

TEST(DateTimeParse, EveryMonthByItsFirstThreeLetters) {
    const std::string names = "JanFebMarAprMayJunJulAugSepOctNovDec";
    for (std::size_t month = 1; month <= 12; ++month) {
        EXPECT_EQ(Parsed("1 " + names.substr((month - 1) * 3, 3) + " 2026"),
                  "2026-" + std::to_string(month) + "-1 0:0:0");
    }
}

TEST(DateTimeParse, NumbersAreMonthDayYear) {
    EXPECT_EQ(Parsed("01/02/2001"), "2001-1-2 0:0:0");
    EXPECT_EQ(Parsed("3/5/2014 4:07 PM"), "2014-3-5 16:7:0");
    EXPECT_EQ(Parsed("3-5-2014"), "2014-3-5 0:0:0");
}

TEST(DateTimeParse, NumbersAreDayMonthYearWhereOnlyThatIsADate) {
    EXPECT_EQ(Parsed("15/11/1994"), "1994-11-15 0:0:0");
    EXPECT_EQ(Parsed("12/11/1994"), "1994-12-11 0:0:0");
    EXPECT_EQ(Parsed("13/13/1994"), "none");
}

TEST(DateTimeParse, YearMonthDay) {
    EXPECT_EQ(Parsed("2014/3/5"), "2014-3-5 0:0:0");
    EXPECT_EQ(Parsed("2014-03-05 16:07:09"), "2014-3-5 16:7:9");
}

TEST(DateTimeParse, TwoDigitYearsCountFrom1930To2029) {
    EXPECT_EQ(Parsed("15 Nov 94"), "1994-11-15 0:0:0");
    EXPECT_EQ(Parsed("1/1/30"), "1930-1-1 0:0:0");
    EXPECT_EQ(Parsed("1/1/29"), "2029-1-1 0:0:0");
    EXPECT_EQ(Parsed("1/1/00"), "2000-1-1 0:0:0");
    EXPECT_EQ(Parsed("Tuesday, 15-Nov-94"), "none");
}

TEST(DateTimeParse, MorningAndAfternoon) {
    EXPECT_EQ(Parsed("3/5/2014 12:00 AM"), "2014-3-5 0:0:0");
    EXPECT_EQ(Parsed("3/5/2014 12:00 pm"), "2014-3-5 12:0:0");
    EXPECT_EQ(Parsed("3/5/2014 11:59:59PM"), "2014-3-5 23:59:59");
    EXPECT_EQ(Parsed("3/5/2014 13:00 PM"), "none");
    EXPECT_EQ(Parsed("3/5/2014 0:30 AM"), "none");
    EXPECT_EQ(Parsed("3/5/2014 1:00 XM"), "none");
}

TEST(DateTimeParse, DaysThatTheMonthDoesNotHaveAreNoDate) {
    EXPECT_EQ(Parsed("30 Feb 2026"), "none");
    EXPECT_EQ(Parsed("29 Feb 2026"), "none");
    EXPECT_EQ(Parsed("29 Feb 2024"), "2024-2-29 0:0:0");
    EXPECT_EQ(Parsed("29 Feb 1900"), "none");
    EXPECT_EQ(Parsed("31/4/2026"), "none");
    EXPECT_EQ(Parsed("0 Nov 1994"), "none");
    EXPECT_EQ(Parsed("0/1/2026"), "none");
    EXPECT_EQ(Parsed("1/0/2026"), "none");
}

TEST(DateTimeParse, LargeNumbersAreNoMonthsAndDays) {
    EXPECT_EQ(Parsed("2020/257/1"), "none");
    EXPECT_EQ(Parsed("Jan 257 2020"), "none");
    EXPECT_EQ(Parsed("257 Jan 2020"), "none");
    EXPECT_EQ(Parsed("99999/1/1"), "none");
    EXPECT_EQ(Parsed("1/1/99999999999"), "none");
    EXPECT_EQ(Parsed("1/1/099"), "none");
}

TEST(DateTimeParse, TimesOutOfRangeAreNoDate) {
    EXPECT_EQ(Parsed("15 Nov 1994 24:00:00"), "none");
    EXPECT_EQ(Parsed("15 Nov 1994 08:60"), "none");
    EXPECT_EQ(Parsed("15 Nov 1994 08:12:60"), "none");
    EXPECT_EQ(Parsed("15 Nov 1994 08"), "none");
    EXPECT_EQ(Parsed("15 Nov 1994 08:"), "none");
    EXPECT_EQ(Parsed("15 Nov 1994 08:12:"), "none");
}

TEST(DateTimeParse, OtherTextsAreNoDate) {
    for (const char* text : {"", " ", "12345", "no date", "15 Xyz 1994", "15 No 1994", "15Nov1994",
                             "Nov 1994", "15 Nov", "1/2", "15 Nov 1994 08:12:31 GMT",
                             "Tue, 15 Nov 1994", "1/2-2001", "15 Nov 1994x", "-1/1/2001"}) {
        EXPECT_EQ(Parsed(text), "none") << text;
    }
}

}  // namespace
}  // namespace swiftpatch
