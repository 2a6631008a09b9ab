#include "runtime/internal/http_address.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "runtime/runtime_error.h"
#include "runtime/strings.h"

namespace swiftpatch {
namespace {

constexpr std::string_view kScheme = "http://";

[[noreturn]] void RaiseMalformed() { throw RuntimeError(error_number::kMalformedUrl); }

std::string_view WithoutScheme(std::string_view url) {
    if (EqualWithoutCase(url.substr(0, kScheme.size()), kScheme)) {
        return url.substr(kScheme.size());
    }
    // A colon and two slashes further on belong to a query; before the first slash they name a
    // scheme that is not spoken here.
    const std::size_t scheme = url.find("://");
    if (scheme != std::string_view::npos && scheme < url.find('/')) {
        RaiseMalformed();
    }
    return url;
}

std::uint16_t ParsePort(std::string_view text) {
    std::uint16_t port = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), port);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size() || port == 0) {
        RaiseMalformed();
    }
    return port;
}

/// RFC 3986 section 2.1: bytes that an address cannot hold are sent as "%" and two digits.
/// Line ends would start a header of their own and are refused.
std::string EscapedPath(std::string_view path) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string escaped;
    for (const char character : path) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < ' ') {
            RaiseMalformed();
        }
        if (byte == ' ' || byte >= 0x7F) {
            escaped += '%';
            escaped += kDigits[byte >> 4];
            escaped += kDigits[byte & 15];
        } else {
            escaped += character;
        }
    }
    return escaped;
}

bool IsHostCharacter(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte > ' ' && byte != 0x7F &&
           std::string_view("@\\\"<>").find(character) == std::string_view::npos;
}

}  // namespace

HttpAddress ParseHttpAddress(const std::string& url) {
    std::string_view rest = WithoutScheme(url);
    rest = rest.substr(0, rest.find('#'));
    const std::size_t slash = std::min(rest.find('/'), rest.find('?'));
    std::string_view authority = rest.substr(0, slash);
    HttpAddress address;
    if (slash != std::string_view::npos) {
        const std::string path = EscapedPath(rest.substr(slash));
        address.path = path.front() == '/' ? path : "/" + path;
    }
    const std::size_t colon = authority.rfind(':');
    const std::size_t bracket = authority.rfind(']');
    if (colon != std::string_view::npos && (bracket == std::string_view::npos || colon > bracket)) {
        address.port = ParsePort(authority.substr(colon + 1));
        authority = authority.substr(0, colon);
    }
    for (const char character : authority) {
        if (!IsHostCharacter(character)) {
            RaiseMalformed();
        }
    }
    if (authority.empty()) {
        RaiseMalformed();
    }
    address.host = authority;
    return address;
}

}  // namespace swiftpatch
