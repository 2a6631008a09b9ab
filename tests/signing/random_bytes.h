#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace swiftpatch {

/// Numbers and bytes that look random, and are the same in every run.
class RandomBytes {
public:
    explicit RandomBytes(std::uint64_t seed) : engine_(seed) {}

    /// A number below `limit`.
    std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(engine_() % limit); }

    std::vector<std::uint8_t> Bytes(std::size_t length);

    std::array<std::uint8_t, 32> Seed();

private:
    std::mt19937_64 engine_;
};

/// Changes the bit at `place`.
template <typename Bytes>
void FlipBit(Bytes& bytes, std::size_t place) {
    using Byte = typename Bytes::value_type;
    bytes[place / 8] = static_cast<Byte>(bytes[place / 8] ^ (1 << place % 8));
}

}  // namespace swiftpatch
