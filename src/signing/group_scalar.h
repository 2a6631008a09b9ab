#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "signing/limbs.h"

namespace swiftpatch {

/// How often a point is added to itself: a number below the order of the group, L = 2^252 +
/// 27742317777372353535851937790883648493 (RFC 8032 section 5.1).
struct Scalar {
    Limbs limbs{};
};

/// Every scalar is below 2^253.
inline constexpr unsigned kScalarBits = 253;

/// The scalar in 32 bytes. None for L and what is above it: with such a number a signature could be
/// written in a second form, without the key.
std::optional<Scalar> ScalarOf(std::span<const std::uint8_t, 32> bytes);

/// The rest that a number of 64 bytes, the least significant first, leaves when it is divided by L.
Scalar ReducedScalar(std::span<const std::uint8_t, 64> bytes);

}  // namespace swiftpatch
