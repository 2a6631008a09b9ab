#pragma once

#include "runtime/win32/peer.h"

namespace swiftpatch {

/// Tells screen readers the accessible name of a control that has one.
void NameForScreenReaders(const ControlPeer& peer);

}  // namespace swiftpatch
