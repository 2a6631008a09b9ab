// The state as a square of four rows with four words each; a register holds one half of a row. The
// four mixings down the columns do not touch each other, nor do the four along the diagonals, so a
// step of all four is two operations on pairs of words. Between columns and diagonals the rows
// behind the first are turned, by one, two and three words (RFC 7693 section 3.2).
//
// Each function names the instructions that it may be compiled to, and the file as a whole does
// not: a copy of an inline function with such instructions could be the one that the linker keeps
// for the whole program.
#include <emmintrin.h>

#include <cstddef>
#include <cstdint>

#include "signing/blake2b_rounds.h"

#define SWIFTPATCH_SSE2 [[gnu::target("sse2"), gnu::always_inline]] inline

namespace swiftpatch {
namespace {

struct Row {
    __m128i left;
    __m128i right;
};

struct Square {
    Row a;
    Row b;
    Row c;
    Row d;
};

SWIFTPATCH_SSE2 __m128i Pair(const std::uint64_t* block, std::size_t first, std::size_t second) {
    return _mm_unpacklo_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(block + first)),
                              _mm_loadl_epi64(reinterpret_cast<const __m128i*>(block + second)));
}

SWIFTPATCH_SSE2 __m128i RotatedBy32(__m128i x) {
    return _mm_shuffle_epi32(x, _MM_SHUFFLE(2, 3, 0, 1));
}
SWIFTPATCH_SSE2 __m128i RotatedBy24(__m128i x) {
    return _mm_xor_si128(_mm_srli_epi64(x, 24), _mm_slli_epi64(x, 40));
}
SWIFTPATCH_SSE2 __m128i RotatedBy16(__m128i x) {
    constexpr int kByOne = _MM_SHUFFLE(0, 3, 2, 1);
    return _mm_shufflehi_epi16(_mm_shufflelo_epi16(x, kByOne), kByOne);
}
SWIFTPATCH_SSE2 __m128i RotatedBy63(__m128i x) {
    return _mm_xor_si128(_mm_srli_epi64(x, 63), _mm_add_epi64(x, x));
}

/// Section 3.1, for two columns or diagonals.
SWIFTPATCH_SSE2 void MixPair(__m128i& a, __m128i& b, __m128i& c, __m128i& d, __m128i x, __m128i y) {
    a = _mm_add_epi64(_mm_add_epi64(a, b), x);
    d = RotatedBy32(_mm_xor_si128(d, a));
    c = _mm_add_epi64(c, d);
    b = RotatedBy24(_mm_xor_si128(b, c));
    a = _mm_add_epi64(_mm_add_epi64(a, b), y);
    d = RotatedBy16(_mm_xor_si128(d, a));
    c = _mm_add_epi64(c, d);
    b = RotatedBy63(_mm_xor_si128(b, c));
}

SWIFTPATCH_SSE2 void MixAll(Square& v, const std::uint64_t* block, const std::uint8_t* order) {
    MixPair(v.a.left, v.b.left, v.c.left, v.d.left, Pair(block, order[0], order[2]),
            Pair(block, order[1], order[3]));
    MixPair(v.a.right, v.b.right, v.c.right, v.d.right, Pair(block, order[4], order[6]),
            Pair(block, order[5], order[7]));
}

/// The second word of `x` and the first one of `y`.
SWIFTPATCH_SSE2 __m128i Across(__m128i x, __m128i y) {
    return _mm_castpd_si128(_mm_shuffle_pd(_mm_castsi128_pd(x), _mm_castsi128_pd(y), 1));
}
SWIFTPATCH_SSE2 Row TurnedByOne(Row row) {
    return {Across(row.left, row.right), Across(row.right, row.left)};
}
SWIFTPATCH_SSE2 Row TurnedByTwo(Row row) { return {row.right, row.left}; }
SWIFTPATCH_SSE2 Row TurnedByThree(Row row) { return TurnedByTwo(TurnedByOne(row)); }

SWIFTPATCH_SSE2 Row LoadedRow(const std::uint64_t* words) {
    const auto* const pairs = reinterpret_cast<const __m128i*>(words);
    return {_mm_loadu_si128(pairs), _mm_loadu_si128(pairs + 1)};
}
SWIFTPATCH_SSE2 void StoreRow(std::uint64_t* words, Row row) {
    auto* const pairs = reinterpret_cast<__m128i*>(words);
    _mm_storeu_si128(pairs, row.left);
    _mm_storeu_si128(pairs + 1, row.right);
}

}  // namespace

// Its caller's stack is aligned as 32-bit Windows has it, to four bytes.
[[gnu::target("sse2"), gnu::force_align_arg_pointer]] void MixSse2(Blake2bWords& v,
                                                                   const Blake2bWords& block) {
    std::uint64_t* const words = v.data();
    Square square = {LoadedRow(words), LoadedRow(words + 4), LoadedRow(words + 8),
                     LoadedRow(words + 12)};
    for (const auto& order : kBlake2bRounds) {
        MixAll(square, block.data(), order.data());
        square.b = TurnedByOne(square.b);
        square.c = TurnedByTwo(square.c);
        square.d = TurnedByThree(square.d);
        MixAll(square, block.data(), order.data() + 8);
        square.b = TurnedByThree(square.b);
        square.c = TurnedByTwo(square.c);
        square.d = TurnedByOne(square.d);
    }
    StoreRow(words, square.a);
    StoreRow(words + 4, square.b);
    StoreRow(words + 8, square.c);
    StoreRow(words + 12, square.d);
}

}  // namespace swiftpatch
