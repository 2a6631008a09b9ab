#pragma once

#include <optional>

#include "runtime/win32/peer.h"

namespace swiftpatch {

// The form's background, and the controls that are painted here: labels and pictures. Everything
// is put together in memory first, so that nothing flickers.

/// Answers WM_PAINT of a form.
void PaintForm(FormPeer& form);
/// Paints the form's background where a control's theme asks for what is behind it.
void PaintFormOn(const FormPeer& form, HDC device);
/// The brush, and in `device` the colours, of what a control paints itself.
HBRUSH BrushForControl(FormPeer& form, HDC device, HWND control);
/// To be called when the form's background has changed.
void BackgroundChanged(FormPeer& form);
/// The same for its colour alone. One that is near to what is shown can come a moment later, on a
/// timer of the form's, or not at all when others follow.
void BackColorChanged(FormPeer& form);
inline constexpr UINT_PTR kBackColorTimer = 1;
void OnBackColorTimer(FormPeer& form);

/// To be called when something of a label has changed: also what lies above it is painted anew.
void LabelChanged(ControlPeer& label);
/// Paints a label at once if it has changed. Costs next to nothing otherwise.
void RefreshLabel(ControlPeer& label);

// What controls answer themselves; empty leaves a message to the control's class.
std::optional<LRESULT> AnswerAsLabel(ControlPeer& peer, UINT message, WPARAM wParam, LPARAM lParam);
std::optional<LRESULT> AnswerAsImage(ControlPeer& peer, UINT message);
std::optional<LRESULT> AnswerAsFrame(const ControlPeer& peer, UINT message, WPARAM wParam,
                                     LPARAM lParam);
std::optional<LRESULT> AnswerAsTextBox(const ControlPeer& peer, UINT message);

}  // namespace swiftpatch
