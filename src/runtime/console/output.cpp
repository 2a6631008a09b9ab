#include "runtime/console/output.h"

#include "runtime/win32/win32.h"

namespace swiftpatch {
namespace {

bool IsTerminal(HANDLE handle) {
    DWORD mode = 0;
    return ::GetConsoleMode(handle, &mode) != FALSE;
}

void Write(DWORD stream, std::string_view text) {
    const HANDLE handle = ::GetStdHandle(stream);
    std::string bytes(text);
    if (IsTerminal(handle)) {
        // A console has a code page of its own.
        ::CharToOemBuffA(text.data(), bytes.data(), static_cast<DWORD>(text.size()));
    }
    DWORD written = 0;
    ::WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

}  // namespace

void WriteOutput(std::string_view text) { Write(STD_OUTPUT_HANDLE, text); }

void WriteErrors(std::string_view text) { Write(STD_ERROR_HANDLE, text); }

bool OutputIsTerminal() { return IsTerminal(::GetStdHandle(STD_OUTPUT_HANDLE)); }

std::u16string ToUtf16(std::string_view text) {
    std::wstring wide(text.size(), L'\0');
    const int length = ::MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()),
                                             wide.data(), static_cast<int>(wide.size()));
    return {wide.begin(), wide.begin() + length};
}

}  // namespace swiftpatch
