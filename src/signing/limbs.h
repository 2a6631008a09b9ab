#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace swiftpatch {

/// A number of 256 bits in eight parts of 32, the least significant first: what a 32-bit processor
/// multiplies in one step. Nothing that is computed with these numbers is secret, neither here nor
/// in what is built on them. So nothing takes care to need the same time for all of them.
using Limbs = std::array<std::uint32_t, 8>;

/// The number in 32 bytes, the least significant first.
Limbs LimbsOf(std::span<const std::uint8_t, 32> bytes);

std::array<std::uint8_t, 32> BytesOf(const Limbs& number);

bool IsBelow(const Limbs& number, const Limbs& limit);

/// `number` - `less`, which may not be the greater one.
Limbs Difference(const Limbs& number, const Limbs& less);

/// The bit at `place`, 0 being the least significant one.
bool HasBit(const Limbs& number, unsigned place);

}  // namespace swiftpatch
