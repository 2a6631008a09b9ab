#include "runtime/win32/keyboard.h"

namespace swiftpatch {

/// There is no window that a key could go to.
bool HandleKey(MSG& /*message*/) { return false; }

}  // namespace swiftpatch
