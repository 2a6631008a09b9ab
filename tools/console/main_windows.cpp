// The entry point on Windows. Texts are UTF-8 from here on: so the standard library takes the names
// of files, and so the report is written.
#include <cwchar>
#include <iostream>

#include "console/tool.h"
#include "runtime/win32/system_library.h"
#include "runtime/win32/win32.h"

namespace {

/// Lets the console read what is written as UTF-8; it outlives the program, so it is set back.
class Utf8Console {
public:
    Utf8Console() { ::SetConsoleOutputCP(CP_UTF8); }
    ~Utf8Console() { ::SetConsoleOutputCP(before_); }
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;

private:
    const UINT before_ = ::GetConsoleOutputCP();
};

std::string Utf8(const wchar_t* text) {
    constexpr std::size_t kLongestLetter = 3;  // Bytes for each unit of UTF-16.
    const std::size_t units = std::wcslen(text);
    std::string bytes(units * kLongestLetter, '\0');
    const int length =
        ::WideCharToMultiByte(CP_UTF8, 0, text, static_cast<int>(units), bytes.data(),
                              static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(length));
    return bytes;
}

}  // namespace

int wmain(int count, wchar_t* arguments[]) {
    swiftpatch::KeepToSystemLibraries();
    std::vector<std::string> texts;
    for (int i = 1; i < count; ++i) {
        texts.push_back(Utf8(arguments[i]));
    }
    const Utf8Console console;
    return RunTool(texts, std::cout, std::cerr);
}
