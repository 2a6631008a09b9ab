#include <algorithm>
#include <array>
#include <charconv>

#include "runtime/datetime.h"
#include "runtime/strings.h"

namespace swiftpatch {
namespace {

constexpr std::array<std::string_view, 12> kMonths{"january",   "february", "march",    "april",
                                                   "may",       "june",     "july",     "august",
                                                   "september", "october",  "november", "december"};

/// Reads a text from its start, piece by piece; a piece that is not there leaves it as it was.
class Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) {}

    bool AtEnd() const { return rest_.empty(); }

    /// Digits, four at the most; their count goes to `length`.
    std::optional<int> Number(std::size_t* length = nullptr) {
        const std::size_t digits = Count([](char c) { return c >= '0' && c <= '9'; });
        int value = 0;
        std::from_chars(rest_.data(), rest_.data() + digits, value);
        if (digits == 0 || digits > 4) {
            return std::nullopt;
        }
        if (length != nullptr) {
            *length = digits;
        }
        rest_.remove_prefix(digits);
        return value;
    }

    std::string_view Word() {
        const std::size_t letters =
            Count([](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); });
        const std::string_view word = rest_.substr(0, letters);
        rest_.remove_prefix(letters);
        return word;
    }

    bool Sign(char character) {
        if (rest_.empty() || rest_.front() != character) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }

    bool Blanks() {
        const std::size_t blanks = Count([](char c) { return c == ' '; });
        rest_.remove_prefix(blanks);
        return blanks > 0;
    }

private:
    template <class Predicate>
    std::size_t Count(Predicate wanted) const {
        return static_cast<std::size_t>(std::find_if_not(rest_.begin(), rest_.end(), wanted) -
                                        rest_.begin());
    }

    std::string_view rest_;
};

std::optional<int> MonthNumber(std::string_view word) {
    for (std::size_t i = 0; i < kMonths.size(); ++i) {
        if (EqualWithoutCase(word, kMonths[i]) || EqualWithoutCase(word, kMonths[i].substr(0, 3))) {
            return static_cast<int>(i) + 1;
        }
    }
    return std::nullopt;
}

/// Two digits stand for the years 1930 to 2029.
std::optional<int> ReadYear(Reader& reader) {
    std::size_t digits = 0;
    const std::optional<int> year = reader.Number(&digits);
    if (year && digits <= 2) {
        return *year < 30 ? *year + 2000 : *year + 1900;
    }
    return year && *year >= 100 ? year : std::nullopt;
}

/// What stands between day and month name, and between month name and year.
bool Between(Reader& reader) {
    const bool blanks = reader.Blanks();
    const bool sign = reader.Sign('-') || reader.Sign(',');
    return reader.Blanks() || blanks || sign;
}

bool ReadNumericDate(Reader& reader, int first, std::size_t firstDigits, char separator,
                     DateParts& date) {
    const std::optional<int> second = reader.Number();
    if (!second || !reader.Sign(separator)) {
        return false;
    }
    if (firstDigits > 2) {
        const std::optional<int> day = reader.Number();
        date = {first, *second, day.value_or(0)};
        return day.has_value();
    }
    const std::optional<int> year = ReadYear(reader);
    const bool dayFirst = first > 12;
    date = {year.value_or(0), dayFirst ? *second : first, dayFirst ? first : *second};
    return year.has_value();
}

bool ReadDateFromNumber(Reader& reader, DateParts& date) {
    std::size_t digits = 0;
    const std::optional<int> first = reader.Number(&digits);
    if (!first) {
        return false;
    }
    for (const char separator : {'/', '-'}) {
        Reader ahead = reader;
        if (ahead.Sign(separator) && ReadNumericDate(ahead, *first, digits, separator, date)) {
            reader = ahead;
            return true;
        }
    }
    if (!Between(reader)) {
        return false;
    }
    const std::optional<int> month = MonthNumber(reader.Word());
    if (!month || !Between(reader)) {
        return false;
    }
    const std::optional<int> year = ReadYear(reader);
    date = {year.value_or(0), *month, *first};
    return year.has_value();
}

bool ReadDateFromMonthName(Reader& reader, DateParts& date) {
    const std::optional<int> month = MonthNumber(reader.Word());
    if (!month || !Between(reader)) {
        return false;
    }
    const std::optional<int> day = reader.Number();
    if (!day || !Between(reader)) {
        return false;
    }
    const std::optional<int> year = ReadYear(reader);
    date = {year.value_or(0), *month, *day};
    return year.has_value();
}

bool ReadHalfOfDay(Reader& reader, DateParts& parts) {
    reader.Blanks();
    if (reader.AtEnd()) {
        return true;
    }
    const std::string_view half = reader.Word();
    const bool afternoon = EqualWithoutCase(half, "PM");
    if ((!afternoon && !EqualWithoutCase(half, "AM")) || parts.hour < 1 || parts.hour > 12) {
        return false;
    }
    parts.hour = parts.hour % 12 + (afternoon ? 12 : 0);
    return true;
}

bool ReadTime(Reader& reader, DateParts& parts) {
    const std::optional<int> hour = reader.Number();
    if (!hour || !reader.Sign(':')) {
        return false;
    }
    const std::optional<int> minute = reader.Number();
    const std::optional<int> second = reader.Sign(':') ? reader.Number() : 0;
    if (!minute || !second) {
        return false;
    }
    parts.hour = *hour;
    parts.minute = *minute;
    parts.second = *second;
    return ReadHalfOfDay(reader, parts);
}

bool IsInRange(const DateParts& parts) {
    // Looked at first: the types below hold months and days in a byte, and 257 would become 1.
    if (parts.month > 12 || parts.day > 31) {
        return false;
    }
    const std::chrono::year_month_day date(std::chrono::year(parts.year),
                                           std::chrono::month(static_cast<unsigned>(parts.month)),
                                           std::chrono::day(static_cast<unsigned>(parts.day)));
    return date.ok() && parts.year >= 100 && parts.hour <= 23 && parts.minute <= 59 &&
           parts.second <= 59;
}

}  // namespace

std::optional<DateTime> ParseDateTime(std::string_view text) {
    Reader reader(TrimBlanks(text));
    DateParts parts;
    Reader fromName = reader;
    if (ReadDateFromMonthName(fromName, parts)) {
        reader = fromName;
    } else if (!ReadDateFromNumber(reader, parts)) {
        return std::nullopt;
    }
    if (!reader.AtEnd() && !(reader.Blanks() && ReadTime(reader, parts))) {
        return std::nullopt;
    }
    if (!reader.AtEnd() || !IsInRange(parts)) {
        return std::nullopt;
    }
    return MakeDateTime(parts);
}

}  // namespace swiftpatch
