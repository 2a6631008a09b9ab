#include "runtime/internal/consent.h"

namespace swiftpatch {

/// The person of the machine in memory is always there.
bool MayRequest(const std::string& /*url*/, const std::string& /*verb*/) { return true; }

}  // namespace swiftpatch
