#include <bit>
#include <cstddef>

#include "signing/blake2b_rounds.h"

// The words of the processors that this is for have 32 bits, and the program is optimized for size.
// So the mixing is inlined whatever the compiler thinks of it: then the places of the state are
// known to it, and a turn by 32 bits costs nothing.

namespace swiftpatch {
namespace {

/// Section 3.1: mixes two words of the block into four of the state.
[[gnu::always_inline]] inline void Mix(Blake2bWords& v, std::size_t a, std::size_t b, std::size_t c,
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

void MixPlain(Blake2bWords& v, const Blake2bWords& block) {
    for (const auto& order : kBlake2bRounds) {
        Mix(v, 0, 4, 8, 12, block[order[0]], block[order[1]]);
        Mix(v, 1, 5, 9, 13, block[order[2]], block[order[3]]);
        Mix(v, 2, 6, 10, 14, block[order[4]], block[order[5]]);
        Mix(v, 3, 7, 11, 15, block[order[6]], block[order[7]]);
        Mix(v, 0, 5, 10, 15, block[order[8]], block[order[9]]);
        Mix(v, 1, 6, 11, 12, block[order[10]], block[order[11]]);
        Mix(v, 2, 7, 8, 13, block[order[12]], block[order[13]]);
        Mix(v, 3, 4, 9, 14, block[order[14]], block[order[15]]);
    }
}

}  // namespace swiftpatch
