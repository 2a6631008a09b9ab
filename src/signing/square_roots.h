#pragma once

#include <array>
#include <cstdint>

namespace swiftpatch {

/// The first 64 bits behind the point of the square roots of the first eight primes: what both
/// hashes begin with (RFC 6234 section 6.3, RFC 7693 section 2.6).
inline constexpr std::array<std::uint64_t, 8> kSquareRoots = {
    0x6A09E667F3BCC908, 0xBB67AE8584CAA73B, 0x3C6EF372FE94F82B, 0xA54FF53A5F1D36F1,
    0x510E527FADE682D1, 0x9B05688C2B3E6C1F, 0x1F83D9ABFB41BD6B, 0x5BE0CD19137E2179};

}  // namespace swiftpatch
