#include "e2e/text.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>

#include "e2e/drive_error.h"
#include "e2e/win32.h"

namespace swiftpatch::e2e {

std::string Utf8(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, result.data(), size, nullptr, nullptr);
    return result;
}

std::string PathText(const std::filesystem::path& path) { return Utf8(path.native()); }

std::wstring Quoted(const std::filesystem::path& path) { return L"\"" + path.native() + L"\""; }

std::wstring Wide(std::string_view utf8) {
    const int length = static_cast<int>(utf8.size());
    const int size = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0);
    std::wstring result(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, result.data(), size);
    return result;
}

std::string OneLine(std::string_view text) {
    std::string line;
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '\r') {
            line += "\\r";
        } else if (c == '\n') {
            line += "\\n";
        } else if (code < ' ') {
            std::array<char, 8> digits{};
            std::snprintf(digits.data(), digits.size(), "\\x%02X", static_cast<unsigned>(code));
            line += digits.data();
        } else {
            line += c;
        }
    }
    return line;
}

bool BeginsWith(std::string_view text, std::string_view beginning) {
    return text.substr(0, beginning.size()) == beginning;
}

std::string ReadWholeFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw DriveError("cannot read " + PathText(path));
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteWholeFile(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) {
        throw DriveError("cannot write " + PathText(path));
    }
}

}  // namespace swiftpatch::e2e
