#include "scenarios/words.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

namespace swiftpatch::scenarios {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

char CharacterOf(std::string_view hexDigits) {
    unsigned value = 0;
    const char* const end = hexDigits.data() + hexDigits.size();
    if (hexDigits.size() != 2 || std::from_chars(hexDigits.data(), end, value, 16).ptr != end) {
        throw TableError("\\x wants two hexadecimal digits");
    }
    return static_cast<char>(static_cast<unsigned char>(value));
}

}  // namespace

std::string Trimmed(std::string_view text) {
    const auto first = std::find_if_not(text.begin(), text.end(), IsBlank);
    const auto last = std::find_if_not(text.rbegin(), text.rend(), IsBlank).base();
    return first < last ? std::string(first, last) : std::string();
}

std::vector<std::string> SplitAt(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        pieces.push_back(Trimmed(text.substr(start, end - start)));
        start = end + 1;
    }
    return pieces;
}

std::string TakeWord(std::string& text) {
    const auto end = std::find_if(text.begin(), text.end(), IsBlank);
    const std::string word(text.begin(), end);
    text = Trimmed(std::string(end, text.end()));
    return word;
}

bool TakeBeginning(std::string& text, std::string_view beginning) {
    if (std::string_view(text).substr(0, beginning.size()) != beginning ||
        (text.size() > beginning.size() && !IsBlank(text[beginning.size()]))) {
        return false;
    }
    text = Trimmed(text.substr(beginning.size()));
    return true;
}

std::size_t NumberIn(const std::string& text) {
    std::size_t value = 0;
    const char* const end = text.data() + text.size();
    if (text.empty() || std::from_chars(text.data(), end, value).ptr != end) {
        throw TableError("no number: " + text);
    }
    return value;
}

std::chrono::local_seconds TimeIn(const std::string& text) {
    using namespace std::chrono;
    std::array<int, 6> parts{};
    if (std::sscanf(text.c_str(), "%d-%d-%d %d:%d:%d", &parts[0], &parts[1], &parts[2], &parts[3],
                    &parts[4], &parts[5]) != 6) {
        throw TableError("no time: " + text);
    }
    const year_month_day date{year(parts[0]), month(static_cast<unsigned>(parts[1])),
                              day(static_cast<unsigned>(parts[2]))};
    return local_days(date) + hours(parts[3]) + minutes(parts[4]) + seconds(parts[5]);
}

std::string Unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            result += text[i];
            continue;
        }
        const char kind = ++i < text.size() ? text[i] : '\0';
        if (kind == 'x') {
            result += CharacterOf(text.substr(i + 1, 2));
            i += 2;
            continue;
        }
        constexpr std::string_view kKinds = "rnt\\_";
        constexpr std::string_view kMeanings = "\r\n\t\\ ";
        const std::size_t place = kKinds.find(kind);
        // Anything else is a path.
        result += place == std::string_view::npos ? "\\" + std::string(kind != '\0', kind)
                                                  : std::string(1, kMeanings[place]);
    }
    return result;
}

std::string Replaced(std::string text, std::string_view name, std::string_view value) {
    for (std::size_t at = text.find(name); at != std::string::npos;
         at = text.find(name, at + value.size())) {
        text.replace(at, name.size(), value);
    }
    return text;
}

}  // namespace swiftpatch::scenarios
