#include "runtime/win32/inet_calls.h"

#include <array>

#include "runtime/app.h"

namespace swiftpatch {
namespace {

constexpr DWORD kRequestFlags = INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_CACHE_WRITE |
                                INTERNET_FLAG_PRAGMA_NOCACHE | INTERNET_FLAG_NO_COOKIES |
                                INTERNET_FLAG_KEEP_CONNECTION | INTERNET_FLAG_NO_UI |
                                INTERNET_FLAG_NO_AUTH;

DWORD WINAPI CloseHandleHere(void* handle) {
    WinInet().InternetCloseHandle(handle);
    return 0;
}

}  // namespace

HINTERNET OpenSession() {
    const HINTERNET session = WinInet().InternetOpenA(
        App::Title().c_str(), INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, INTERNET_FLAG_ASYNC);
    // Each request has a time-out of its own; the system's are shorter and would come first.
    DWORD longest = 24 * 60 * 60 * 1000;
    for (const int option : {INTERNET_OPTION_CONNECT_TIMEOUT, INTERNET_OPTION_SEND_TIMEOUT,
                             INTERNET_OPTION_RECEIVE_TIMEOUT}) {
        WinInet().InternetSetOptionA(session, static_cast<DWORD>(option), &longest,
                                     sizeof(longest));
    }
    WinInet().InternetSetStatusCallbackA(session, OnInternetStatus);
    return session;
}

HINTERNET OpenRequest(HINTERNET connection, const std::string& verb, const std::string& path,
                      Exchange& exchange) {
    std::array<const char*, 2> accepted{"*/*", nullptr};
    return WinInet().HttpOpenRequestA(connection, verb.c_str(), path.c_str(), nullptr, nullptr,
                                      accepted.data(), kRequestFlags,
                                      reinterpret_cast<DWORD_PTR>(&exchange));
}

std::int32_t StatusCode(HINTERNET request) {
    DWORD status = 0;
    DWORD size = sizeof(status);
    WinInet().HttpQueryInfoA(request, HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER, &status,
                             &size, nullptr);
    return static_cast<std::int32_t>(status);
}

std::string RawHeaders(HINTERNET request) {
    DWORD size = 0;
    WinInet().HttpQueryInfoA(request, HTTP_QUERY_RAW_HEADERS_CRLF, nullptr, &size, nullptr);
    std::string headers(size + 1, '\0');
    if (!WinInet().HttpQueryInfoA(request, HTTP_QUERY_RAW_HEADERS_CRLF, headers.data(), &size,
                                  nullptr)) {
        return {};
    }
    headers.resize(size);
    return headers;
}

void CloseUnread(HINTERNET request) {
    DWORD id = 0;
    const HANDLE thread = ::CreateThread(nullptr, 0, CloseHandleHere, request, 0, &id);
    if (thread == nullptr) {
        WinInet().InternetCloseHandle(request);
    } else {
        ::CloseHandle(thread);
    }
}

}  // namespace swiftpatch
