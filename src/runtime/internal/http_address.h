#pragma once

#include <cstdint>
#include <string>

namespace swiftpatch {

/// An http or https address, taken apart.
struct HttpAddress {
    bool secure = false;  ///< https
    std::string host;
    std::uint16_t port = 80;
    std::string path = "/";  ///< With the query, without the fragment.
};

/// Takes an address apart; without a scheme it is http. Raises 35752 when it is neither an http nor
/// an https address.
HttpAddress ParseHttpAddress(const std::string& url);

/// The address as one text, with the port where it is not the scheme's own.
std::string UrlOf(const HttpAddress& address);

/// The address that `reference` means in an answer from `base` (RFC 3986 section 5.2). Raises 35752
/// as ParseHttpAddress does.
HttpAddress ResolveReference(const HttpAddress& base, const std::string& reference);

}  // namespace swiftpatch
