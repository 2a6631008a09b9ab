#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "runtime/inet.h"
#include "runtime/internal/http_address.h"

namespace swiftpatch {

/// The way of one request from address to address (RFC 9110 section 15.4): ten redirects at most,
/// and none from https to http. It is not left to the platforms, which may not know all of the
/// answers that redirect, go round in a circle, or leave the protected address.
class RedirectChain {
public:
    explicit RedirectChain(HttpAddress first) : address_(std::move(first)) {}

    /// Where the request is to go now.
    const HttpAddress& Address() const { return address_; }

    /// How many redirects led there.
    int Length() const { return length_; }

    /// False for an answer that is no redirect, true when Address has to be asked next. Raises
    /// 35756 for a redirect that may not be followed, and 35752 for one to no http or https
    /// address.
    bool Follow(std::int32_t status, const std::string& headers);

    /// Why the last redirect could not be followed.
    TransferFault Fault() const { return fault_; }

private:
    HttpAddress address_;
    int length_ = 0;
    TransferFault fault_ = TransferFault::kNone;
};

}  // namespace swiftpatch
