#include <windows.h>

#include "plain.h"

namespace {

bool Copy(const std::wstring& source, const std::wstring& target) {
    return CopyFileW(source.c_str(), target.c_str(), FALSE) != 0;
}

bool Flush(const std::wstring& path) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    const bool done = file != INVALID_HANDLE_VALUE && FlushFileBuffers(file) != 0;
    CloseHandle(file);
    return done;
}

std::string ReadAll(const std::wstring& path) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    std::string text(GetFileSize(file, nullptr), '\0');
    DWORD count = 0;
    ReadFile(file, text.data(), static_cast<DWORD>(text.size()), &count, nullptr);
    CloseHandle(file);
    text.resize(count);
    return text;
}

}  // namespace

bool CopyTwiceAndFlush(const Arguments& arguments) {
    return Copy(arguments.at(0), arguments.at(1)) && Flush(arguments.at(1)) &&
           Copy(arguments.at(2), arguments.at(3)) && Flush(arguments.at(3));
}

bool ShowLog(const Arguments& arguments) {
    const HWND box = CreateWindowExA(
        0, "EDIT", "", WS_OVERLAPPEDWINDOW | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_READONLY,
        100, 100, 600, 500, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    SendMessageA(box, EM_LIMITTEXT, 0, 0);
    const std::string text = ReadAll(arguments.at(0));
    const bool done = SetWindowTextA(box, text.c_str()) != 0;
    ShowWindow(box, SW_SHOW);
    UpdateWindow(box);
    return done && !text.empty();
}
