#include "net/chunk_count.h"

#include <gtest/gtest.h>

#include <limits>

#include "runtime/runtime_error.h"

namespace swiftpatch {
namespace {

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

TEST(ChunkCount, AddsTheUpperBound) { EXPECT_EQ(CountChunk(5, 1023), 1028); }

TEST(ChunkCount, CountsOneForTheEmptyChunk) { EXPECT_EQ(CountChunk(5, -1), 6); }

TEST(ChunkCount, ReachesTheLargestNumber) {
    EXPECT_EQ(CountChunk(kLargest - 1023, 1023), kLargest);
}

TEST(ChunkCount, OverflowsBeyondIt) {
    try {
        CountChunk(kLargest - 1022, 1023);
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), error_number::kOverflow);
    }
}

}  // namespace
}  // namespace swiftpatch
