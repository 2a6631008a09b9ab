#pragma once

#include "e2e/controls.h"
#include "e2e/updater.h"
#include "e2e/win32.h"

namespace swiftpatch::e2e {

/// Whether Shift is held down with a key.
enum class Shift { kUp, kDown };

/// A key as the system gets it from a keyboard. Waits until a window of the updater has the
/// keyboard; throws DriveError when none gets it.
void PressKey(const Updater& updater, WORD key, Shift shift = Shift::kUp);

/// Waits until the keyboard is on a control of the updater, or on its message box.
void AwaitFocus(const Updater& updater, const Control& control);
void AwaitFocus(const Updater& updater, const Box& box);

}  // namespace swiftpatch::e2e
