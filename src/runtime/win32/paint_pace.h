#pragma once

#include "runtime/win32/peer.h"

namespace swiftpatch {

// What a label or a progress bar shows follows each change at once, but not more often than twenty
// times a second: a download changes both with every per cent, nobody sees more than that, and each
// painting is a handful of calls to the server of the windows on some platforms.

/// To be called when a label or a progress bar has changed. What comes too soon is shown by the
/// next ShowLateChanges, or on a timer of the form's.
void ShowChange(ControlPeer& control);

/// Shows what is late on all forms. For yields that work may follow which does not yield: what was
/// set before it is then to be seen.
void ShowLateChanges();

inline constexpr UINT_PTR kLateChangesTimer = 2;
void OnLateChangesTimer(FormPeer& form);

}  // namespace swiftpatch
