#include <windows.h>
// Need the platform's own header before them.
#include <urlmon.h>
#include <wininet.h>

#include "plain.h"

namespace {

bool CopyBody(HINTERNET request, HANDLE file, std::size_t size) {
    std::vector<char> block(size);
    for (;;) {
        DWORD count = 0;
        if (InternetReadFile(request, block.data(), static_cast<DWORD>(block.size()), &count) ==
            0) {
            return false;
        }
        if (count == 0) {
            return true;
        }
        DWORD written = 0;
        if (WriteFile(file, block.data(), count, &written, nullptr) == 0 || written != count) {
            return false;
        }
    }
}

}  // namespace

bool ReadInBlocks(const Arguments& arguments) {
    const HINTERNET session =
        InternetOpenW(L"bench", INTERNET_OPEN_TYPE_DIRECT, nullptr, nullptr, 0);
    const HINTERNET request =
        InternetOpenUrlW(session, arguments.at(1).c_str(), nullptr, 0,
                         INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_CACHE_WRITE |
                             INTERNET_FLAG_NO_COOKIES | INTERNET_FLAG_KEEP_CONNECTION,
                         0);
    const HANDLE file =
        CreateFileW(arguments.at(2).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    const bool done = request != nullptr && file != INVALID_HANDLE_VALUE &&
                      CopyBody(request, file, std::stoul(arguments.at(0)));
    CloseHandle(file);
    InternetCloseHandle(request);
    InternetCloseHandle(session);
    return done;
}

bool Fetch(const Arguments& arguments) {
    const wchar_t* const url = arguments.at(0).c_str();
    const bool done =
        SUCCEEDED(URLDownloadToFileW(nullptr, url, arguments.at(1).c_str(), 0, nullptr));
    DeleteUrlCacheEntryW(url);
    return done;
}
