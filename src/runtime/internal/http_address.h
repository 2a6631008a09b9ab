#pragma once

#include <cstdint>
#include <string>

namespace swiftpatch {

/// An http address, taken apart.
struct HttpAddress {
    std::string host;
    std::uint16_t port = 80;
    std::string path = "/";  ///< With the query, without the fragment.
};

/// Takes an address apart; "http://" may be missing. Raises 35752 when it is not an http address.
HttpAddress ParseHttpAddress(const std::string& url);

}  // namespace swiftpatch
