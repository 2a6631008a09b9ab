#include "runtime/win32/keyboard.h"

namespace swiftpatch {
namespace {

bool CanBePressed(const CommandButton& button) { return button.Visible && button.Enabled; }

const CommandButton* AsButton(const Control* control) {
    return control != nullptr && control->Kind() == ComponentKind::kCommandButton
               ? static_cast<const CommandButton*>(control)
               : nullptr;
}

/// The button that a key presses, wherever the focus is; null for none.
const CommandButton* FindButton(const Form& form, bool CommandButton::*role) {
    for (const Control* control : form.Controls()) {
        const CommandButton* button = AsButton(control);
        if (button != nullptr && button->*role && CanBePressed(*button)) {
            return button;
        }
    }
    return nullptr;
}

const CommandButton* ButtonForEnter(const Form& form, const Control* focus) {
    const CommandButton* focused = AsButton(focus);
    return focused != nullptr && CanBePressed(*focused) ? focused
                                                        : FindButton(form, &CommandButton::Default);
}

/// Only the first stroke of a key that is held down counts: the repeated ones could press what
/// comes up next, such as Close behind a box that the first one has answered.
bool IsRepeated(const MSG& message) { return (HIWORD(message.lParam) & KF_REPEAT) != 0; }

const CommandButton* ButtonForKey(const Form& form, const MSG& message) {
    switch (IsRepeated(message) ? 0 : message.wParam) {
        case VK_RETURN:
            return ButtonForEnter(form, ControlOfWindow(::GetFocus()));
        case VK_ESCAPE:
            return FindButton(form, &CommandButton::Cancel);
        default:
            return nullptr;
    }
}

}  // namespace

void FrameButtonForEnter(const FormPeer& form, const Control& focus) {
    constexpr LONG kKindOfButton = 0x0F;  // BS_TYPEMASK
    const CommandButton* const pressed = ButtonForEnter(form.form, &focus);
    for (const Control* control : form.form.Controls()) {
        const CommandButton* const button = AsButton(control);
        if (button == nullptr || button->peer() == nullptr) {
            continue;
        }
        const HWND window = button->peer()->window;
        const LONG style = button == pressed ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
        if ((::GetWindowLongA(window, GWL_STYLE) & kKindOfButton) != style) {
            ::SendMessageA(window, BM_SETSTYLE, static_cast<WPARAM>(style), TRUE);
        }
    }
}

bool HandleKey(MSG& message) {
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) {
        return false;
    }
    FormPeer* const form = FormPeerAround(message.hwnd);
    if (form == nullptr) {
        return false;
    }
    if (message.message == WM_KEYDOWN &&
        (message.wParam == VK_RETURN || message.wParam == VK_ESCAPE)) {
        const CommandButton* button = ButtonForKey(form->form, message);
        if (button != nullptr) {
            ::PostMessageA(form->window, WM_COMMAND,
                           MAKEWPARAM(static_cast<WORD>(button->Id()), BN_CLICKED),
                           reinterpret_cast<LPARAM>(button->peer()->window));
        }
        return true;
    }
    return ::IsDialogMessageA(form->window, &message) != FALSE;
}

}  // namespace swiftpatch
