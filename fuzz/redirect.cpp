#include <algorithm>

#include "property.h"
#include "runtime/internal/redirect_chain.h"
#include "runtime/runtime_error.h"

namespace swiftpatch::fuzz {
namespace {

bool CanBeSent(const HttpAddress& address) {
    const auto plain = [](char character) { return character > ' ' && character < 0x7F; };
    return !address.host.empty() && address.path.starts_with('/') && address.port != 0 &&
           std::all_of(address.path.begin(), address.path.end(), plain) &&
           address.host.find_first_of("/?#@\\\r\n ") == std::string::npos;
}

void Follow(const HttpAddress& base, const std::string& location) {
    RedirectChain chain(base);
    try {
        for (int hop = 0; chain.Follow(302, "Location: " + location); ++hop) {
            const HttpAddress& next = chain.Address();
            Always(hop < 10, "redirects come to an end");
            Always(CanBeSent(next), "what is asked for can be sent in a request");
            Always(next.secure || !base.secure, "a protected address is not left");
            Always(UrlOf(ParseHttpAddress(UrlOf(next))) == UrlOf(next),
                   "an address as one text is the address");
        }
    } catch (const RuntimeError& error) {
        Always(error.Number() == error_number::kMalformedUrl ||
                   error.Number() == error_number::kRequestFailed,
               "only a redirect that may not be followed raises an error");
    }
}

}  // namespace
}  // namespace swiftpatch::fuzz

/// What an answer redirects to, from an http and from an https address.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace swiftpatch;
    const std::string location(fuzz::TextOf(data, size));
    fuzz::Follow(ParseHttpAddress("http://host:81/folder/file?query"), location);
    fuzz::Follow(ParseHttpAddress("https://host/folder/file"), location);
    return 0;
}
