#pragma once

#include "runtime/win32/win32.h"

namespace swiftpatch {

/// Paints the sunken edge (WS_EX_CLIENTEDGE) of a window in the visual style's way. The style's own
/// controls do that for themselves; for any other window the system paints the edge of old times.
/// Without a visual style nothing is painted.
void PaintThemedEdge(HWND window);

}  // namespace swiftpatch
