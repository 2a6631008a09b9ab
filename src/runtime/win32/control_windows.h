#pragma once

#include "runtime/win32/peer.h"

namespace swiftpatch {

/// Creates the windows of a form's controls, frames before what they hold.
void CreateControlWindows(FormPeer& form);

/// Gives a control's window the font that its look and its properties ask for.
void ApplyFont(ControlPeer& peer);

}  // namespace swiftpatch
