#pragma once

#include "runtime/win32/handle.h"

namespace swiftpatch {

/// The picture in a resource of the program (RCDATA); none when it cannot be read.
UniqueInterface<IPicture> LoadPicture(int resourceId);

/// Draws the picture as large as it fits into `where` undistorted, in its middle.
void DrawPicture(IPicture* picture, HDC device, const RECT& where);

}  // namespace swiftpatch
