// The measure of all things: a download in the plainest way that the platform offers, blocks of
// 64 KiB from the network library straight to the disk. Ends with 0 when the whole body came.
#include <windows.h>
#include <wininet.h>

#include <array>

namespace {

bool CopyBody(HINTERNET request, HANDLE file) {
    static std::array<char, 65536> block;
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

bool Download(const wchar_t* url, const wchar_t* path) {
    const HINTERNET session =
        InternetOpenW(L"bench", INTERNET_OPEN_TYPE_DIRECT, nullptr, nullptr, 0);
    const HINTERNET request =
        InternetOpenUrlW(session, url, nullptr, 0,
                         INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_CACHE_WRITE |
                             INTERNET_FLAG_NO_COOKIES | INTERNET_FLAG_KEEP_CONNECTION,
                         0);
    const HANDLE file = CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    const bool done = request != nullptr && file != INVALID_HANDLE_VALUE && CopyBody(request, file);
    CloseHandle(file);
    InternetCloseHandle(request);
    InternetCloseHandle(session);
    return done;
}

}  // namespace

int wmain(int argc, wchar_t** argv) { return argc == 3 && Download(argv[1], argv[2]) ? 0 : 1; }
