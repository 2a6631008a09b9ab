#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace swiftpatch::e2e {

/// The platform's wide text as UTF-8, which all texts in the tests are.
std::string Utf8(std::wstring_view text);
std::string PathText(const std::filesystem::path& path);
std::wstring Wide(std::string_view utf8);

/// "PATH", as an argument of a program.
std::wstring Quoted(const std::filesystem::path& path);

/// A text on one line: line breaks and other control characters are shown as \r, \n, \xNN.
std::string OneLine(std::string_view text);

/// True when `text` begins with `beginning`.
bool BeginsWith(std::string_view text, std::string_view beginning);

/// The bytes of a file; throws DriveError when it cannot be read.
std::string ReadWholeFile(const std::filesystem::path& path);
void WriteWholeFile(const std::filesystem::path& path, std::string_view bytes);

}  // namespace swiftpatch::e2e
