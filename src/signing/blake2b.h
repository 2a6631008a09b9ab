#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "signing/square_roots.h"

namespace swiftpatch {

/// BLAKE2b (RFC 7693) without a key and with its longest result, 64 bytes. A build is hashed while
/// it comes in, so that it never has to be in memory as a whole.
class Blake2b {
public:
    using Digest = std::array<std::uint8_t, 64>;

    /// How a block is mixed in; the hash is the same. With SSE2 it takes a quarter of the time, but
    /// the caller has to know that the processor and the system have it.
    enum class Mixing { kPlain, kSse2 };

    explicit Blake2b(Mixing mixing = Mixing::kPlain);

    /// Takes in the next bytes, any number of them.
    void Update(std::span<const std::uint8_t> bytes);

    /// The hash of all bytes so far. To be called once, as the last.
    Digest Finish();

private:
    static constexpr std::size_t kBlockSize = 128;

    void Compress(const std::uint8_t* block, bool last);

    Mixing mixing_;
    std::array<std::uint64_t, 8> state_ = kSquareRoots;
    std::array<std::uint8_t, kBlockSize> waiting_{};
    std::size_t waitingLength_ = 0;
    std::uint64_t length_ = 0;  ///< Of all that has been compressed.
};

}  // namespace swiftpatch
