#pragma once

#include <cstdint>

namespace swiftpatch {

/// The bytes counted so far, and one more chunk. A chunk counts as its upper bound, which is one
/// less than its bytes; the empty chunk at the end, whose upper bound is -1, counts as one. The
/// percentage is computed from this undercount, deliberately. Raises error 6 past 32 signed bits.
std::int32_t CountChunk(std::int32_t received, std::int32_t upperBound);

}  // namespace swiftpatch
