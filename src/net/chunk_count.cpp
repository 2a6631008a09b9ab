#include "net/chunk_count.h"

#include <cstdlib>
#include <limits>

#include "runtime/runtime_error.h"

namespace swiftpatch {

std::int32_t CountChunk(std::int32_t received, std::int32_t upperBound) {
    const std::int32_t more = std::abs(upperBound);
    if (received > std::numeric_limits<std::int32_t>::max() - more) {
        throw RuntimeError(error_number::kOverflow);
    }
    return received + more;
}

}  // namespace swiftpatch
