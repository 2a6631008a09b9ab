#include "runtime/win32/form_events.h"

#include <algorithm>

#include "runtime/events.h"
#include "runtime/win32/painting.h"

// The last step before the program's event procedures: FormProcedure hands over what users, other
// programs and the system send to a form, and each function here decides whether an event comes of
// it. They run on the user-interface thread inside a pump, and so often inside an event procedure
// that is waiting.
//
// An event procedure can last for minutes and show boxes. Another program that sends a press or a
// close, rather than posting it, would stand still for as long. Such a message is therefore put
// off: the form posts another one to itself, and looks at everything anew when that arrives,
// because by then the control may be hidden, the form disabled or the run over. The end of a
// session cannot be put off, since the system wants its answer: it asks first (QueryUnload) and
// ends later.
//
// A form is no dialog box of the system's, so it remembers itself which of its controls has the
// keyboard when another window becomes the active one.

namespace swiftpatch {
namespace {

bool SomebodyWaits() { return ::InSendMessage() != FALSE; }

bool CanHaveFocus(HWND window) { return ::IsWindowVisible(window) && ::IsWindowEnabled(window); }

/// The first control that the Tab key would visit; a form without one keeps the focus itself.
HWND FirstTabStop(const FormPeer& form) {
    const HWND first = ::GetNextDlgTabItem(form.window, nullptr, FALSE);
    return first != nullptr && CanHaveFocus(first) ? first : nullptr;
}

}  // namespace

void OnPressed(const FormPeer& form, HWND control) {
    if (SomebodyWaits()) {
        ::PostMessageA(form.window, kPressedLater, 0, reinterpret_cast<LPARAM>(control));
    } else {
        OnPressedLater(form, control);
    }
}

void OnPressedLater(const FormPeer& form, HWND window) {
    Control* const control = ControlOfWindow(window);
    // A disabled form has a box or another form in front of it. What a program sends past that does
    // not count.
    if (control == nullptr || RunIsOver() || !::IsWindowEnabled(form.window)) {
        return;
    }
    if (control->Kind() == ComponentKind::kCommandButton) {
        RaiseEvent([control] { static_cast<CommandButton*>(control)->RaiseClick(); });
    } else if (control->Kind() == ComponentKind::kCheckBox && control->Enabled &&
               control->Visible) {
        RaiseEvent([control] { static_cast<CheckBox*>(control)->RaisePressed(); });
    }
}

void OnTimer(FormPeer& form, WPARAM id) {
    if (id == kBackColorTimer) {
        OnBackColorTimer(form);
        return;
    }
    if (RunIsOver() || EventsAreHeld()) {
        return;
    }
    const std::vector<Timer*>& timers = form.form.Timers();
    const auto found = std::find_if(timers.begin(), timers.end(), [id](const Timer* timer) {
        return static_cast<WPARAM>(timer->Id()) == id;
    });
    if (found != timers.end()) {
        RaiseEvent([timer = *found] { timer->RaiseElapsed(); });
    }
}

void OnClose(const FormPeer& form) {
    if (SomebodyWaits()) {
        ::PostMessageA(form.window, kCloseLater, 0, 0);
    } else {
        OnCloseLater(form);
    }
}

void OnCloseLater(const FormPeer& form) {
    if (!RunIsOver()) {
        RaiseEvent([&going = form.form] { going.Unload(); });
    }
}

LRESULT OnQueryEndSession(const FormPeer& form) {
    bool mayEnd = true;
    if (!RunIsOver()) {
        RaiseEvent([&asked = form.form, &mayEnd] { mayEnd = asked.QueryUnload(); });
    }
    return mayEnd ? TRUE : FALSE;
}

void OnEndSession(const FormPeer& form, bool ending) {
    if (ending && !RunIsOver()) {
        RaiseEvent([&going = form.form] { going.UnloadUnasked(); });
    }
}

void OnActivate(FormPeer& form, bool active) {
    if (!active) {
        const HWND focus = ::GetFocus();
        form.focus = ::IsChild(form.window, focus) ? focus : nullptr;
    } else if (!::IsIconic(form.window)) {
        ::SetFocus(form.window);
    }
}

void OnSetFocus(const FormPeer& form) {
    const bool remembered = ::IsChild(form.window, form.focus) && CanHaveFocus(form.focus);
    const HWND next = remembered ? form.focus : FirstTabStop(form);
    if (next != nullptr) {
        ::SetFocus(next);
    }
}

bool OnSetCursor(const FormPeer& form) {
    if (form.form.Pointer == MousePointer::kDefault) {
        return false;
    }
    ::SetCursor(::LoadCursorA(nullptr, IDC_WAIT));
    return true;
}

void OnSystemColors(const FormPeer& form) {
    for (const MemberPeer* member : form.members) {
        if (member->window != form.window) {
            ::SendMessageA(member->window, WM_SYSCOLORCHANGE, 0, 0);
        }
    }
    ::InvalidateRect(form.window, nullptr, FALSE);
}

void GiveFocusTo(FormPeer& form, HWND control) {
    form.focus = control;
    // Only then: a box of ours, or another program, must not lose the keyboard.
    const bool active = ::GetActiveWindow() == form.window && !::IsIconic(form.window);
    // Nor must a button that is held down lose its press.
    const bool pressing = ::GetCapture() != nullptr;
    if (active && !pressing && CanHaveFocus(control)) {
        ::SetFocus(control);
    }
}

void MoveFocusFrom(const FormPeer& form, HWND leaving) {
    if (::GetFocus() != leaving) {
        return;
    }
    const HWND next = ::GetNextDlgTabItem(form.window, leaving, FALSE);
    ::SetFocus(next != nullptr && next != leaving && CanHaveFocus(next) ? next : form.window);
}

}  // namespace swiftpatch
