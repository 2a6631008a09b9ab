#include "signing/group_scalar.h"

#include <cstddef>

namespace swiftpatch {
namespace {

constexpr Limbs kOrder = {0x5CF5D3ED, 0x5812631A, 0xA2F79CD6, 0x14DEF9DE, 0, 0, 0, 0x10000000};

/// Twice the number, and one more if `bit` is set. Nothing is lost of one below kOrder.
Limbs WithBit(const Limbs& number, bool bit) {
    Limbs longer;
    std::uint32_t carry = bit ? 1 : 0;
    for (std::size_t i = 0; i < number.size(); ++i) {
        longer[i] = number[i] << 1 | carry;
        carry = number[i] >> 31;
    }
    return longer;
}

}  // namespace

std::optional<Scalar> ScalarOf(std::span<const std::uint8_t, 32> bytes) {
    const Limbs number = LimbsOf(bytes);
    return IsBelow(number, kOrder) ? std::optional(Scalar{number}) : std::nullopt;
}

Scalar ReducedScalar(std::span<const std::uint8_t, 64> bytes) {
    Limbs rest{};
    for (std::size_t place = bytes.size() * 8; place-- > 0;) {
        rest = WithBit(rest, (bytes[place / 8] >> place % 8 & 1) != 0);
        if (!IsBelow(rest, kOrder)) {
            rest = Difference(rest, kOrder);
        }
    }
    return {rest};
}

}  // namespace swiftpatch
