#pragma once

#include "runtime/win32/win32.h"

namespace swiftpatch {

/// The procedure of all forms' windows.
LRESULT CALLBACK FormProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Stands before the procedures of the controls' classes.
LRESULT CALLBACK ControlProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace swiftpatch
