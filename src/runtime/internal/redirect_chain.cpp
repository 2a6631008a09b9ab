#include "runtime/internal/redirect_chain.h"

#include "runtime/internal/http_headers.h"
#include "runtime/runtime_error.h"

namespace swiftpatch {
namespace {

constexpr int kMostRedirects = 10;

bool Redirects(std::int32_t status) {
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

}  // namespace

bool RedirectChain::Follow(std::int32_t status, const std::string& headers) {
    const std::string location = HeaderValue(headers, "Location");
    if (!Redirects(status) || location.empty()) {
        return false;
    }
    HttpAddress next = ResolveReference(address_, location);
    if (address_.secure && !next.secure) {
        fault_ = TransferFault::kUnprotectedRedirect;
    }
    if (fault_ != TransferFault::kNone || ++length_ > kMostRedirects) {
        throw RuntimeError(error_number::kRequestFailed);
    }
    address_ = std::move(next);
    return true;
}

}  // namespace swiftpatch
