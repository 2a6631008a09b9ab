#include "runtime/internal/http_address.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include "runtime/runtime_error.h"
#include "runtime/strings.h"

namespace swiftpatch {
namespace {

struct Scheme {
    std::string_view prefix;
    bool secure;
    std::uint16_t port;  ///< Where the address names none.
};
constexpr Scheme kHttp{"http://", false, 80};
constexpr Scheme kHttps{"https://", true, 443};
constexpr std::array kSchemes{kHttp, kHttps};

[[noreturn]] void RaiseMalformed() { throw RuntimeError(error_number::kMalformedUrl); }

bool BeginsWithScheme(std::string_view url, const Scheme& scheme) {
    return EqualWithoutCase(url.substr(0, scheme.prefix.size()), scheme.prefix);
}

/// Takes the scheme away from `url`.
Scheme TakeScheme(std::string_view& url) {
    const auto* const named =
        std::find_if(kSchemes.begin(), kSchemes.end(),
                     [url](const Scheme& scheme) { return BeginsWithScheme(url, scheme); });
    if (named != kSchemes.end()) {
        url.remove_prefix(named->prefix.size());
        return *named;
    }
    // A colon and two slashes further on belong to a query; before the first slash they name a
    // scheme that is not spoken here.
    const std::size_t other = url.find("://");
    if (other != std::string_view::npos && other < url.find('/')) {
        RaiseMalformed();
    }
    return kHttp;
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

/// RFC 3986 section 5.2.4: "." and ".." name folders, seen from the one before them.
std::string WithoutDots(std::string_view path) {
    std::string clean;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/', 1), path.size());
        const std::string_view segment = path.substr(0, end);
        const bool last = end == path.size();
        if (segment == "/.." || segment == "/.") {
            if (segment == "/..") {
                clean.resize(std::min(clean.rfind('/'), clean.size()));
            }
            clean += last ? "/" : "";
        } else {
            clean += segment;
        }
        path.remove_prefix(end);
    }
    return clean;
}

/// RFC 3986 section 3.1; without it a reference is relative.
bool HasScheme(std::string_view reference) {
    const std::size_t colon = reference.find(':');
    return colon != std::string_view::npos && colon < reference.find_first_of("/?#");
}

bool IsHostCharacter(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte > ' ' && byte != 0x7F &&
           std::string_view("@\\\"<>").find(character) == std::string_view::npos;
}

/// RFC 3986 section 3.2.2: colons stand in brackets only, which are around the whole.
bool IsHost(std::string_view text) {
    const bool bracketed = text.size() > 2 && text.front() == '[' && text.back() == ']';
    const std::string_view name = bracketed ? text.substr(1, text.size() - 2) : text;
    return !name.empty() && std::all_of(name.begin(), name.end(), IsHostCharacter) &&
           name.find_first_of(bracketed ? "[]" : "[]:") == std::string_view::npos;
}

}  // namespace

HttpAddress ParseHttpAddress(const std::string& url) {
    std::string_view rest = url;
    const Scheme scheme = TakeScheme(rest);
    rest = rest.substr(0, rest.find('#'));
    const std::size_t slash = std::min(rest.find('/'), rest.find('?'));
    std::string_view authority = rest.substr(0, slash);
    HttpAddress address{scheme.secure, "", scheme.port, "/"};
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
    if (!IsHost(authority)) {
        RaiseMalformed();
    }
    address.host = authority;
    return address;
}

std::string UrlOf(const HttpAddress& address) {
    const Scheme& scheme = address.secure ? kHttps : kHttp;
    const std::string port = address.port == scheme.port ? "" : ":" + std::to_string(address.port);
    return std::string(scheme.prefix) + address.host + port + address.path;
}

HttpAddress ResolveReference(const HttpAddress& base, const std::string& reference) {
    if (HasScheme(reference)) {
        if (!BeginsWithScheme(reference, kHttp) && !BeginsWithScheme(reference, kHttps)) {
            RaiseMalformed();
        }
        return ParseHttpAddress(reference);
    }
    if (reference.starts_with("//")) {
        return ParseHttpAddress((base.secure ? "https:" : "http:") + reference);
    }
    const std::string target = EscapedPath(reference.substr(0, reference.find('#')));
    const std::size_t query = std::min(target.find('?'), target.size());
    const std::string basePath = base.path.substr(0, base.path.find('?'));
    HttpAddress address = base;
    if (query != 0) {
        const bool rooted = target.front() == '/';
        const std::string folder = rooted ? "" : basePath.substr(0, basePath.rfind('/') + 1);
        address.path = WithoutDots(folder + target.substr(0, query)) + target.substr(query);
    } else if (!target.empty()) {
        address.path = basePath + target;
    }
    return address;
}

}  // namespace swiftpatch
