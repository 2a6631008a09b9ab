#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace swiftpatch {

/// A date and time of day to the second, without a zone: whether it is local or UTC is said where
/// it is held.
using DateTime = std::chrono::local_seconds;

/// A date and time taken apart.
struct DateParts {
    int year = 0;
    int month = 0;  ///< 1 to 12
    int day = 0;    ///< 1 to 31
    int hour = 0;   ///< 0 to 23
    int minute = 0;
    int second = 0;
};

DateParts PartsOf(DateTime time);

/// Puts a date together. Parts beyond their range carry over: second 65 is the next minute's 5th,
/// hour 24 the next day's midnight.
DateTime MakeDateTime(const DateParts& parts);

/// The number of minute boundaries between two times; negative when `to` is the earlier.
std::int64_t MinutesBetween(DateTime from, DateTime to);

/// `time` moved by a number of minutes.
DateTime AddMinutes(DateTime time, std::int64_t minutes);

/// Reads a date text by rule, whatever the machine's language settings are: day month-name year
/// (month names and their first three letters in English; blanks or "-" between), month-name day
/// year, and numbers month/day/year, day/month/year where only that is a date, and
/// year/month/day; each may be followed by h:mm or h:mm:ss and AM or PM. A year of two digits
/// counts as 1930 to 2029. Empty for anything else.
std::optional<DateTime> ParseDateTime(std::string_view text);

/// "h:mm AM/PM": the hour without a leading zero.
std::string FormatTime12(DateTime time);

/// "Mmm dd, yyyy" with the month's first three letters.
std::string FormatLongDate(DateTime time);

}  // namespace swiftpatch
