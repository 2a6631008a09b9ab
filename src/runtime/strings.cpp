#include "runtime/strings.h"

#include <algorithm>

#include "runtime/runtime_error.h"

namespace swiftpatch {
namespace {

char LowerAscii(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A'))
                                                : character;
}

}  // namespace

std::string Replace(std::string_view text, std::string_view find, std::string_view with) {
    std::string result;
    while (true) {
        const std::size_t at = text.find(find);
        result += text.substr(0, at);
        if (at == std::string_view::npos) {
            return result;
        }
        result += with;
        text.remove_prefix(at + find.size());
    }
}

std::string Right(std::string_view text, std::int64_t count) {
    if (count < 0) {
        throw RuntimeError(error_number::kInvalidProcedureCall);
    }
    const auto length = std::min(static_cast<std::uint64_t>(count), std::uint64_t{text.size()});
    return std::string(text.substr(text.size() - static_cast<std::size_t>(length)));
}

std::vector<std::string> Split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    while (!text.empty()) {
        const std::size_t end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return parts;
        }
        text.remove_prefix(end + 1);
        if (text.empty()) {
            parts.emplace_back();
        }
    }
    return parts;
}

std::string_view TrimBlanks(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool EqualWithoutCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return LowerAscii(a) == LowerAscii(b); });
}

std::string ZeroPadded(std::int32_t number, std::size_t digits) {
    std::string text = std::to_string(number < 0 ? -std::int64_t{number} : std::int64_t{number});
    if (text.size() < digits) {
        text.insert(0, digits - text.size(), '0');
    }
    return number < 0 ? "-" + text : text;
}

}  // namespace swiftpatch
