#include <gtest/gtest.h>

#include "signing/blake2b_rounds.h"

namespace swiftpatch {
namespace {

/// Calls the mixing with a stack that lies `bytes` below one that is aligned to 16.
void MixSse2WithStackAt(std::uint32_t bytes, Blake2bWords& v, const Blake2bWords& block) {
    auto* state = &v;
    auto* function = &MixSse2;
    asm volatile(
        "movl %%esp, %%ebx\n\t"
        "andl $-16, %%esp\n\t"
        "subl %[bytes], %%esp\n\t"
        "pushl %[block]\n\t"
        "pushl %[v]\n\t"
        "call *%[function]\n\t"
        "movl %%ebx, %%esp"
        : [v] "+a"(state), [function] "+c"(function)
        : [bytes] "S"(bytes), [block] "D"(&block)
        : "ebx", "edx", "memory", "cc");
}

TEST(Blake2bSse2, RunsOnAStackThatIsAlignedToFourBytes) {
    const Blake2bWords block = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    Blake2bWords expected = block;
    MixPlain(expected, block);
    for (std::uint32_t bytes = 0; bytes < 16; bytes += 4) {
        Blake2bWords v = block;
        MixSse2WithStackAt(bytes, v, block);
        EXPECT_EQ(v, expected) << bytes;
    }
}

}  // namespace
}  // namespace swiftpatch
