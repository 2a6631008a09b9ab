#pragma once

#include <string>

#include "runtime/win32/win32.h"

namespace swiftpatch {

// What is asked before the program deletes a file, or finds one or a window. With a person in front
// of it there is nothing to ask, and the answers are yes and what the system says. None of these
// pumps.

/// Whether a file may be deleted, or from a folder what an unfinished copy has left. Where it may
/// not, it stays, and the program goes on as if it had gone.
bool MayDelete(const std::string& path);

/// Whether the program is to find a window among those of the desktop.
bool MayFind(HWND window);

/// Whether the program is to find a file; `found` is what the system says.
bool IsThere(const std::string& path, bool found);

}  // namespace swiftpatch
