#include "runtime/datetime.h"

#include "runtime/strings.h"

namespace swiftpatch {

namespace chrono = std::chrono;

DateParts PartsOf(DateTime time) {
    const auto day = chrono::floor<chrono::days>(time);
    const chrono::year_month_day date(day);
    const chrono::hh_mm_ss clock(time - day);
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(clock.hours().count()),
            static_cast<int>(clock.minutes().count()),
            static_cast<int>(clock.seconds().count())};
}

DateTime MakeDateTime(const DateParts& parts) {
    const chrono::year_month month =
        chrono::year(parts.year) / chrono::January + chrono::months(parts.month - 1);
    return chrono::local_days(month / 1) + chrono::days(parts.day - 1) + chrono::hours(parts.hour) +
           chrono::minutes(parts.minute) + chrono::seconds(parts.second);
}

std::int64_t MinutesBetween(DateTime from, DateTime to) {
    const auto minutes = chrono::floor<chrono::minutes>(to) - chrono::floor<chrono::minutes>(from);
    return std::int64_t{minutes.count()};
}

DateTime AddMinutes(DateTime time, std::int64_t minutes) { return time + chrono::minutes(minutes); }

std::string FormatTime12(DateTime time) {
    const DateParts parts = PartsOf(time);
    const int hour = parts.hour % 12 == 0 ? 12 : parts.hour % 12;
    return std::to_string(hour) + ":" + ZeroPadded(parts.minute, 2) +
           (parts.hour < 12 ? " AM" : " PM");
}

std::string FormatLongDate(DateTime time) {
    constexpr std::string_view kMonths = "JanFebMarAprMayJunJulAugSepOctNovDec";
    const DateParts parts = PartsOf(time);
    return std::string(kMonths.substr(static_cast<std::size_t>(parts.month - 1) * 3, 3)) + " " +
           ZeroPadded(parts.day, 2) + ", " + std::to_string(parts.year);
}

}  // namespace swiftpatch
