#include "random_bytes.h"

#include <algorithm>

namespace swiftpatch {

std::vector<std::uint8_t> RandomBytes::Bytes(std::size_t length) {
    std::vector<std::uint8_t> bytes(length);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(engine_());
    }
    return bytes;
}

std::array<std::uint8_t, 32> RandomBytes::Seed() {
    std::array<std::uint8_t, 32> seed{};
    std::ranges::copy(Bytes(seed.size()), seed.begin());
    return seed;
}

}  // namespace swiftpatch
