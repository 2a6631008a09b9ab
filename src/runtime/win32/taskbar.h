#pragma once

#include <cstdint>

#include "runtime/win32/win32.h"

namespace swiftpatch {

/// Shows on the window's button on the task bar how far its work is: 0 to 100, or one of the
/// values that Form::TaskbarProgress has besides. Does nothing on a system without that.
void ShowOnTaskbar(HWND window, std::int32_t progress);

}  // namespace swiftpatch
