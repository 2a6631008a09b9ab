#include "signing/limbs.h"

#include <algorithm>
#include <cstddef>

namespace swiftpatch {

Limbs LimbsOf(std::span<const std::uint8_t, 32> bytes) {
    Limbs number{};
    for (std::size_t i = bytes.size(); i-- > 0;) {
        number[i / 4] = number[i / 4] << 8 | bytes[i];
    }
    return number;
}

std::array<std::uint8_t, 32> BytesOf(const Limbs& number) {
    std::array<std::uint8_t, 32> bytes;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::uint8_t>(number[i / 4] >> i % 4 * 8);
    }
    return bytes;
}

bool IsBelow(const Limbs& number, const Limbs& limit) {
    return std::lexicographical_compare(number.rbegin(), number.rend(), limit.rbegin(),
                                        limit.rend());
}

Limbs Difference(const Limbs& number, const Limbs& less) {
    Limbs difference;
    std::int64_t rest = 0;
    for (std::size_t i = 0; i < number.size(); ++i) {
        rest += std::int64_t{number[i]} - less[i];
        difference[i] = static_cast<std::uint32_t>(rest);
        rest >>= 32;
    }
    return difference;
}

bool HasBit(const Limbs& number, unsigned place) {
    return (number[place / 32] >> place % 32 & 1) != 0;
}

}  // namespace swiftpatch
