#include "runtime/win32/inet_calls.h"

#include <array>

#include "runtime/app.h"

namespace swiftpatch {
namespace {

constexpr DWORD kRequestFlags = INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_CACHE_WRITE |
                                INTERNET_FLAG_PRAGMA_NOCACHE | INTERNET_FLAG_NO_COOKIES |
                                INTERNET_FLAG_KEEP_CONNECTION | INTERNET_FLAG_NO_UI |
                                INTERNET_FLAG_NO_AUTO_REDIRECT;

// What a server is told that asks for a logon where one is allowed for the sake of the proxy.
constexpr char kNobody[] = "anonymous";

/// 0 where the system does not know it.
DWORD OptionOf(HINTERNET request, DWORD option) {
    DWORD value = 0;
    DWORD size = sizeof(value);
    return WinInet().InternetQueryOptionA(request, option, &value, &size) ? value : 0;
}

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

HINTERNET OpenConnection(HINTERNET session, const HttpAddress& address, Logon logon) {
    // A name that is given keeps the system from giving the user's.
    const char* const name = logon == Logon::kProxy ? kNobody : nullptr;
    return WinInet().InternetConnectA(session, address.host.c_str(), address.port, name, name,
                                      INTERNET_SERVICE_HTTP, 0, 0);
}

HINTERNET OpenRequest(HINTERNET connection, const std::string& verb, const HttpAddress& address,
                      Logon logon, Exchange& exchange) {
    std::array<const char*, 2> accepted{"*/*", nullptr};
    const DWORD flags = kRequestFlags | (address.secure ? INTERNET_FLAG_SECURE : 0) |
                        (logon == Logon::kNone ? INTERNET_FLAG_NO_AUTH : 0);
    const HINTERNET request =
        WinInet().HttpOpenRequestA(connection, verb.c_str(), address.path.c_str(), nullptr, nullptr,
                                   accepted.data(), flags, reinterpret_cast<DWORD_PTR>(&exchange));
    if (request != nullptr && logon == Logon::kProxy) {
        // From Internet Explorer 8 on; before it there is only the name.
        WinInet().InternetSetOptionA(request, INTERNET_OPTION_SUPPRESS_SERVER_AUTH, nullptr, 0);
    }
    return request;
}

std::int32_t StatusCode(HINTERNET request) {
    DWORD status = 0;
    DWORD size = sizeof(status);
    WinInet().HttpQueryInfoA(request, HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER, &status,
                             &size, nullptr);
    return static_cast<std::int32_t>(status);
}

bool IsProxyAskingForLogon(HINTERNET request) {
    const bool viaProxy =
        (OptionOf(request, INTERNET_OPTION_REQUEST_FLAGS) & INTERNET_REQFLAG_VIA_PROXY) != 0;
    // What comes over TLS comes from the server, which the proxy has let through before.
    return StatusCode(request) == HTTP_STATUS_PROXY_AUTH_REQ && viaProxy &&
           OptionOf(request, INTERNET_OPTION_SECURITY_KEY_BITNESS) == 0;
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
