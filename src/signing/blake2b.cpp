#include "signing/blake2b.h"

#include <algorithm>
#include <bit>
#include <cstring>

// A build may be hundreds of megabytes long, on a machine whose words have 32 bits and in a program
// that is optimized for size. So the mixing is inlined whatever the compiler thinks of it: then the
// places of the state are known to it, and a turn by 32 bits costs nothing. The words of a block
// are copied as they lie in memory, which is their order on each processor that this runs on.

namespace swiftpatch {
namespace {

static_assert(std::endian::native == std::endian::little);

using Words = std::array<std::uint64_t, 16>;

constexpr std::size_t kRounds = 12;

/// Which word of the block a round takes when (RFC 7693 section 2.7). The last two rounds have the
/// orders of the first two.
constexpr std::array<std::array<std::uint8_t, 16>, 10> kOrders = {{
    {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15},
    {14, 10, 4, 8, 9, 15, 13, 6, 1, 12, 0, 2, 11, 7, 5, 3},
    {11, 8, 12, 0, 5, 2, 15, 13, 10, 14, 3, 6, 7, 1, 9, 4},
    {7, 9, 3, 1, 13, 12, 11, 14, 2, 6, 5, 10, 4, 0, 15, 8},
    {9, 0, 5, 7, 2, 4, 10, 15, 14, 1, 11, 12, 6, 8, 3, 13},
    {2, 12, 6, 10, 0, 11, 8, 3, 4, 13, 7, 5, 15, 14, 1, 9},
    {12, 5, 1, 15, 14, 13, 4, 10, 0, 7, 6, 3, 9, 2, 8, 11},
    {13, 11, 7, 14, 12, 1, 3, 9, 5, 0, 15, 4, 8, 6, 2, 10},
    {6, 15, 14, 9, 11, 3, 0, 8, 12, 2, 13, 7, 1, 4, 10, 5},
    {10, 2, 8, 4, 7, 6, 1, 5, 15, 11, 9, 14, 3, 12, 13, 0},
}};

/// Section 3.1: mixes two words of the block into four of the state.
[[gnu::always_inline]] inline void Mix(Words& v, std::size_t a, std::size_t b, std::size_t c,
                                       std::size_t d, std::uint64_t x, std::uint64_t y) {
    v[a] += v[b] + x;
    v[d] = std::rotr(v[d] ^ v[a], 32);
    v[c] += v[d];
    v[b] = std::rotr(v[b] ^ v[c], 24);
    v[a] += v[b] + y;
    v[d] = std::rotr(v[d] ^ v[a], 16);
    v[c] += v[d];
    v[b] = std::rotr(v[b] ^ v[c], 63);
}

}  // namespace

Blake2b::Blake2b() {
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
    Words m;
    std::memcpy(m.data(), block, sizeof m);
    Words v;
    std::copy(state_.begin(), state_.end(), v.begin());
    std::copy(kSquareRoots.begin(), kSquareRoots.end(), v.begin() + 8);
    v[12] ^= length_;
    if (last) {
        v[14] = ~v[14];
    }
    for (std::size_t round = 0; round < kRounds; ++round) {
        const auto& order = kOrders[round % kOrders.size()];
        Mix(v, 0, 4, 8, 12, m[order[0]], m[order[1]]);
        Mix(v, 1, 5, 9, 13, m[order[2]], m[order[3]]);
        Mix(v, 2, 6, 10, 14, m[order[4]], m[order[5]]);
        Mix(v, 3, 7, 11, 15, m[order[6]], m[order[7]]);
        Mix(v, 0, 5, 10, 15, m[order[8]], m[order[9]]);
        Mix(v, 1, 6, 11, 12, m[order[10]], m[order[11]]);
        Mix(v, 2, 7, 8, 13, m[order[12]], m[order[13]]);
        Mix(v, 3, 4, 9, 14, m[order[14]], m[order[15]]);
    }
    for (std::size_t i = 0; i < state_.size(); ++i) {
        state_[i] ^= v[i] ^ v[i + 8];
    }
}

}  // namespace swiftpatch
