#include "components/utilities.h"

#include "runtime/code_page.h"
#include "runtime/desktop.h"
#include "runtime/system.h"

namespace swiftpatch {
namespace {

constexpr std::size_t kDirectoryBuffer = 255;
constexpr WindowHandle kTopMost = -1;     // HWND_TOPMOST
constexpr WindowHandle kNotTopMost = -2;  // HWND_NOTOPMOST
constexpr std::uint32_t kKeepPlace = 3;   // SWP_NOSIZE | SWP_NOMOVE

std::string Directory(std::uint32_t (*lookUp)(std::string&)) {
    std::string buffer(kDirectoryBuffer, ' ');
    if (lookUp(buffer) == 0) {
        return {};
    }
    std::string path = TrimNull(buffer);
    AddBackslash(path);
    return path;
}

std::optional<DateTime> AsDate(const DateValue& value) {
    if (const auto* time = std::get_if<DateTime>(&value)) {
        return *time;
    }
    const auto* text = std::get_if<std::string>(&value);
    return text == nullptr ? std::nullopt : ParseDateTime(*text);
}

}  // namespace

std::string TrimNull(std::string_view text) { return std::string(text.substr(0, text.find('\0'))); }

void AddBackslash(std::string& path) {
    path.erase(path.find_last_not_of(' ') + 1);
    const std::string masked = MaskTrailBytes(path);
    if (!masked.ends_with('/') && !masked.ends_with('\\')) {
        path += '\\';
    }
}

std::string GetWindowsDir() { return Directory(GetWindowsDirectoryA); }

std::string GetSystemDir() { return Directory(GetSystemDirectoryA); }

std::int32_t SetTopMost(WindowHandle window, const VariantBool& flag) {
    if (flag == kTrue) {
        return SetWindowPos(window, kTopMost, 0, 0, 0, 0, kKeepPlace);
    }
    SetWindowPos(window, kNotTopMost, 0, 0, 0, 0, kKeepPlace);
    return 0;
}

std::optional<std::string> FormatDateMDY(const DateValue& value) {
    const std::optional<DateTime> time = AsDate(value);
    if (!time) {
        return std::nullopt;
    }
    const DateParts parts = PartsOf(*time);
    return std::to_string(parts.month) + "/" + std::to_string(parts.day) + "/" +
           std::to_string(parts.year) + " " + FormatTime12(*time);
}

}  // namespace swiftpatch
