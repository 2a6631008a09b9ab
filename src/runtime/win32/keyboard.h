#pragma once

#include "runtime/win32/peer.h"

namespace swiftpatch {

/// Handles a key that moves between a form's controls or presses one (Tab, Enter, Esc, the
/// underlined letters). True when the message needs nothing more.
bool HandleKey(MSG& message);

/// Frames the button that Enter presses now that `focus` has the keyboard, and no other.
void FrameButtonForEnter(const FormPeer& form, const Control& focus);

}  // namespace swiftpatch
