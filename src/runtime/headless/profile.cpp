#include "runtime/profile.h"

#include <algorithm>
#include <optional>

#include "runtime/headless/profile.h"
#include "runtime/headless/world.h"
#include "runtime/internal/key_lines.h"
#include "runtime/runtime_error.h"
#include "runtime/strings.h"

namespace swiftpatch {
namespace {

using headless::TheWorld;

std::string& LastBuffer() {
    static std::string buffer;
    return buffer;
}

std::string_view WithoutQuotes(std::string_view value) {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

/// A default of nothing but blanks keeps one.
std::string_view WithoutBlanksAtItsEnd(std::string_view text) {
    while (text.size() > 1 && text.ends_with(' ')) {
        text.remove_suffix(1);
    }
    return text;
}

std::optional<std::string> Lookup(const std::string& text, const std::string& section,
                                  const std::string& key) {
    bool inside = false;
    for (const std::string& line : Split(text, '\n')) {
        const std::string_view trimmed = TrimBlanks(line);
        const std::size_t equals = trimmed.find('=');
        if (trimmed.starts_with('[')) {
            if (inside) {
                break;  // A later section of the name is not looked at.
            }
            inside = EqualWithoutCase(trimmed, "[" + section + "]");
        } else if (inside && equals != std::string_view::npos &&
                   EqualWithoutCase(TrimBlanks(trimmed.substr(0, equals)), key)) {
            return std::string(WithoutQuotes(TrimBlanks(trimmed.substr(equals + 1))));
        }
    }
    return std::nullopt;
}

}  // namespace

const std::string& headless::LastProfileBuffer() { return LastBuffer(); }

std::size_t GetPrivateProfileStringA(const std::string& section, const std::string& key,
                                     const std::string& defaultValue, std::string& buffer,
                                     const std::string& file) {
    LastBuffer() = buffer;
    if (TheWorld().whileReadingProfile) {
        TheWorld().whileReadingProfile();
    }
    const headless::File* found = TheWorld().disk.Find(file);
    const bool readable = found != nullptr && found->lockedUntil <= TheWorld().uptime;
    const std::string value = (readable ? Lookup(found->bytes, section, key) : std::nullopt)
                                  .value_or(std::string(WithoutBlanksAtItsEnd(defaultValue)));
    const std::size_t count = std::min(value.size(), buffer.size() - 1);
    buffer.replace(0, count, value, 0, count);
    buffer[count] = '\0';
    return count;
}

bool MayHoldKey(const std::string& key, const std::string& file) {
    const headless::File* const found = TheWorld().disk.Find(file);
    return found != nullptr &&
           (!TheWorld().WaitOutHold(found->lockedUntil) || HasLineOfKey(found->bytes, key));
}

bool WritePrivateProfileStringA(const std::string& section, const std::string& key,
                                const std::string& value, const std::string& file) {
    try {
        TheWorld().disk.Operation("WriteProfile", file + " [" + section + "] " + key + "=" + value);
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

std::string GetSetting(const std::string& application, const std::string& section,
                       const std::string& key, const std::string& defaultValue) {
    const auto& settings = TheWorld().machine.settings;
    const auto found = settings.find(application + "\\" + section + "\\" + key);
    return found == settings.end() ? defaultValue : found->second;
}

}  // namespace swiftpatch
