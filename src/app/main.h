#pragma once

namespace swiftpatch {

/// The start procedure: shows the splash window, whose load event runs the rest of the start.
void Main();

}  // namespace swiftpatch
