#include "runtime/internal/key_lines.h"

#include <algorithm>

#include "runtime/strings.h"

namespace swiftpatch {
namespace {

/// Blanks, and marks of an encoding.
constexpr std::string_view kBefore = " \t\xEF\xBB\xBF\xFF\xFE";

}  // namespace

bool HasLineOfKey(std::string text, std::string_view key) {
    std::erase(text, '\0');
    std::replace(text.begin(), text.end(), '\r', '\n');
    const std::vector<std::string> lines = Split(text, '\n');
    return std::any_of(lines.begin(), lines.end(), [key](std::string_view line) {
        line.remove_prefix(std::min(line.find_first_not_of(kBefore), line.size()));
        return EqualWithoutCase(line.substr(0, key.size()), key);
    });
}

}  // namespace swiftpatch
