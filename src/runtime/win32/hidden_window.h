#pragma once

#include "runtime/win32/win32.h"

namespace swiftpatch {

/// A window of a registered class that is never shown and gets messages only; null when none can be
/// made.
HWND CreateHiddenWindow(const char* windowClass);

}  // namespace swiftpatch
