#pragma once

#include "runtime/win32/peer.h"

namespace swiftpatch {

// What the form's window procedure does with what users, other programs and the system send.

/// A press or a close that another program sends waits for an answer while it is handled. It is
/// put off by one of these, so that no event procedure runs while somebody waits.
inline constexpr UINT kPressedLater = WM_APP + 1;
inline constexpr UINT kCloseLater = WM_APP + 2;

void OnPressed(const FormPeer& form, HWND control);
void OnPressedLater(const FormPeer& form, HWND control);
void OnTimer(FormPeer& form, WPARAM id);
void OnClose(const FormPeer& form);
void OnCloseLater(const FormPeer& form);
LRESULT OnQueryEndSession(const FormPeer& form);
void OnEndSession(const FormPeer& form, bool ending);
void OnActivate(FormPeer& form, bool active);
void OnSetFocus(const FormPeer& form);
/// True when the form's own pointer was set.
bool OnSetCursor(const FormPeer& form);
void OnSystemColors(const FormPeer& form);

/// Puts the keyboard focus on a control of the form, at once or when the form is the active window
/// again.
void GiveFocusTo(FormPeer& form, HWND control);
/// Moves the keyboard focus on if `leaving` has it, a control about to be hidden or disabled.
void MoveFocusFrom(const FormPeer& form, HWND leaving);

}  // namespace swiftpatch
