#pragma once

#include "runtime/win32/win32.h"

namespace swiftpatch {

/// The procedure of all forms' windows.
LRESULT CALLBACK FormProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Sees a control's messages before the procedure of the control's class does.
LRESULT CALLBACK ControlProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace swiftpatch
