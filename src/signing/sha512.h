#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "signing/square_roots.h"

namespace swiftpatch {

/// SHA-512 (RFC 6234), which Ed25519 is made with. It is used alike to Blake2b.
class Sha512 {
public:
    using Digest = std::array<std::uint8_t, 64>;

    /// Takes in the next bytes, any number of them.
    void Update(std::span<const std::uint8_t> bytes);

    /// The hash of all bytes so far. To be called once, as the last.
    Digest Finish();

private:
    static constexpr std::size_t kBlockSize = 128;

    void Compress();

    std::array<std::uint64_t, 8> state_ = kSquareRoots;
    std::array<std::uint8_t, kBlockSize> block_{};
    std::size_t filled_ = 0;    ///< Of the block.
    std::uint64_t length_ = 0;  ///< Of everything, in bytes.
};

}  // namespace swiftpatch
