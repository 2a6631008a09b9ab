#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "runtime/form.h"

namespace swiftpatch {

// The desktop's windows, those of other programs included. The functions are the system's of
// the same names; none raises an error.

/// Calls `callback` for each top-level window from the top down, until it returns false.
void EnumWindows(const std::function<bool(WindowHandle)>& callback);

/// Copies the name of the window's class into `buffer`, cut to the buffer's length less one.
/// Returns the number of characters copied, 0 for a window that is not there.
int GetClassNameA(WindowHandle window, std::string& buffer);

/// Copies the window's title; buffer and result as for GetClassNameA. Does not wait for a window
/// of another program that no longer answers.
int GetWindowTextA(WindowHandle window, std::string& buffer);

/// The window's parent or owner, 0 for none.
WindowHandle GetParent(WindowHandle window);

/// Sends a message and waits until the window has handled it. Messages sent to this program's
/// windows are handled meanwhile. Returns what the window returned, 0 for a window that is gone.
std::int32_t SendMessageA(WindowHandle window, std::uint32_t message, std::uint32_t wParam,
                          std::int32_t lParam);

/// Places a window; `insertAfter`, `flags` and the result are the system's.
std::int32_t SetWindowPos(WindowHandle window, WindowHandle insertAfter, int x, int y, int width,
                          int height, std::uint32_t flags);

}  // namespace swiftpatch
