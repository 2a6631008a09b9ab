#pragma once

#include "runtime/controls.h"
#include "runtime/win32/handle.h"

namespace swiftpatch {

/// The font of the system's dialogs, with a look and in a size; 0 points is the system's size.
UniqueFont MakeFont(const Look& look, int points);

/// The dialog base units of a font: the average width of its letters, and its height.
SIZE BaseUnits(HFONT font);

/// A place in dialog units as pixels.
RECT ToPixels(const Rect& place, const SIZE& baseUnits);

}  // namespace swiftpatch
