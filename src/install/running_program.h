#pragma once

#include <cstdint>
#include <vector>

#include "runtime/form.h"

namespace swiftpatch {

class frmSwiftPatch;

/// The top-level windows found by the last GetWindowHandles, from index 1 on. Index 0 is never
/// filled and never looked at.
inline std::vector<WindowHandle> WindowHandles;

/// Appends a window to WindowHandles. Always true, so that the enumeration runs to its end.
bool EnumWindowsProc(WindowHandle hwnd, std::int32_t lParam);

/// True when the main program is running after the call. When it was found, `window` has become
/// topmost and the user has been asked whether to close it. Errors are not trapped. Pumps.
bool GetWindowHandles(frmSwiftPatch& window);

}  // namespace swiftpatch
