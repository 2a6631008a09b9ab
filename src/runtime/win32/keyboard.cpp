#include "runtime/win32/keyboard.h"

#include "runtime/win32/peer.h"

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

const CommandButton* ButtonForEnter(const Form& form) {
    const CommandButton* focused = AsButton(ControlOfWindow(::GetFocus()));
    return focused != nullptr && CanBePressed(*focused) ? focused
                                                        : FindButton(form, &CommandButton::Default);
}

const CommandButton* ButtonForKey(const Form& form, WPARAM key) {
    switch (key) {
        case VK_RETURN:
            return ButtonForEnter(form);
        case VK_ESCAPE:
            return FindButton(form, &CommandButton::Cancel);
        default:
            return nullptr;
    }
}

}  // namespace

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
        const CommandButton* button = ButtonForKey(form->form, message.wParam);
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
