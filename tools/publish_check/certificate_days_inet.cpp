// The updater's transfer control has no use for the certificate itself, so this asks on its own.
#include "publish_check/certificate_days.h"
#include "publish_check/http_client.h"
#include "runtime/internal/http_address.h"
#include "runtime/win32/wininet.h"

namespace publish_check {
namespace {

using swiftpatch::UniqueInternet;
using swiftpatch::WinInet;

std::int64_t UnixTime(const FILETIME& time) {
    constexpr std::int64_t kTicksASecond = 10000000;       // FILETIME counts 100 ns.
    constexpr std::int64_t kFrom1601To1970 = 11644473600;  // Seconds.
    const auto ticks =
        static_cast<std::int64_t>(std::uint64_t{time.dwHighDateTime} << 32U | time.dwLowDateTime);
    return ticks / kTicksASecond - kFrom1601To1970;
}

UniqueInternet OpenSession() {
    UniqueInternet session(
        WinInet().InternetOpenA("SwiftPatch", INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0));
    DWORD longest = static_cast<DWORD>(kLongestSilence) * 1000;
    for (const int option : {INTERNET_OPTION_CONNECT_TIMEOUT, INTERNET_OPTION_SEND_TIMEOUT,
                             INTERNET_OPTION_RECEIVE_TIMEOUT}) {
        WinInet().InternetSetOptionA(session.Get(), static_cast<DWORD>(option), &longest,
                                     sizeof(longest));
    }
    return session;
}

std::optional<std::int64_t> EndOf(HINTERNET request) {
    INTERNET_CERTIFICATE_INFO certificate{};
    DWORD size = sizeof(certificate);
    if (!WinInet().InternetQueryOptionA(request, INTERNET_OPTION_SECURITY_CERTIFICATE_STRUCT,
                                        &certificate, &size)) {
        return {};
    }
    for (char* text :
         {certificate.lpszSubjectInfo, certificate.lpszIssuerInfo, certificate.lpszProtocolName,
          certificate.lpszSignatureAlgName, certificate.lpszEncryptionAlgName}) {
        ::LocalFree(text);
    }
    return UnixTime(certificate.ftExpiry);
}

}  // namespace

std::optional<std::int64_t> CertificateDays(const std::string& url) {
    constexpr DWORD kFlags = INTERNET_FLAG_SECURE | INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_UI |
                             INTERNET_FLAG_NO_AUTO_REDIRECT | INTERNET_FLAG_NO_AUTH |
                             INTERNET_FLAG_NO_COOKIES | INTERNET_FLAG_NO_CACHE_WRITE;
    const swiftpatch::HttpAddress address = swiftpatch::ParseHttpAddress(url);
    const UniqueInternet session = OpenSession();
    const UniqueInternet connection(WinInet().InternetConnectA(session.Get(), address.host.c_str(),
                                                               address.port, nullptr, nullptr,
                                                               INTERNET_SERVICE_HTTP, 0, 0));
    // The system forgets a connection, and what it knows of it, once all has come in: so there has
    // to be a body, which is left unread.
    const UniqueInternet request(WinInet().HttpOpenRequestA(
        connection.Get(), "GET", address.path.c_str(), nullptr, nullptr, nullptr, kFlags, 0));
    if (!request || !WinInet().HttpSendRequestA(request.Get(), nullptr, 0, nullptr, 0)) {
        return {};
    }
    const auto end = EndOf(request.Get());
    return end ? std::optional(DaysUntil(*end)) : std::nullopt;
}

}  // namespace publish_check
