#include "signing/blake2b.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "signing/blake2b_rounds.h"

// The words of a block are copied as they lie in memory, which is their order on each processor
// that this runs on.
static_assert(std::endian::native == std::endian::little);

namespace swiftpatch {
Blake2b::Blake2b(Mixing mixing) : mixing_(mixing) {
    // Section 2.5: 64 bytes of result, no key, and a tree of one leaf.
    state_[0] ^= 0x01010000 ^ std::tuple_size_v<Digest>;
}

void Blake2b::Update(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        // A full block waits until more comes: the last one is compressed in another way.
        if (waitingLength_ == kBlockSize) {
            Compress(waiting_.data(), false);
            waitingLength_ = 0;
        }
        const std::size_t taken = std::min(bytes.size(), kBlockSize - waitingLength_);
        std::memcpy(waiting_.data() + waitingLength_, bytes.data(), taken);
        waitingLength_ += taken;
        bytes = bytes.subspan(taken);
    }
}

Blake2b::Digest Blake2b::Finish() {
    std::fill(waiting_.begin() + static_cast<std::ptrdiff_t>(waitingLength_), waiting_.end(),
              std::uint8_t{0});
    Compress(waiting_.data(), true);
    Digest digest;
    std::memcpy(digest.data(), state_.data(), digest.size());
    return digest;
}

void Blake2b::Compress(const std::uint8_t* block, bool last) {
    length_ += waitingLength_;
    Blake2bWords words;
    std::memcpy(words.data(), block, sizeof words);
    Blake2bWords v;
    std::copy(state_.begin(), state_.end(), v.begin());
    std::copy(kSquareRoots.begin(), kSquareRoots.end(), v.begin() + 8);
    v[12] ^= length_;
    if (last) {
        v[14] = ~v[14];
    }
    if (mixing_ == Mixing::kSse2) {
        MixSse2(v, words);
    } else {
        MixPlain(v, words);
    }
    for (std::size_t i = 0; i < state_.size(); ++i) {
        state_[i] ^= v[i] ^ v[i + 8];
    }
}

}  // namespace swiftpatch
