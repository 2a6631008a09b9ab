#pragma once

#include "runtime/win32/win32.h"

namespace swiftpatch {

/// Handles a key that moves between a form's controls or presses one (Tab, Enter, Esc, the
/// underlined letters). True when the message needs nothing more.
bool HandleKey(MSG& message);

}  // namespace swiftpatch
