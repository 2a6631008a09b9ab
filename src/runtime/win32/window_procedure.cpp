#include "runtime/win32/window_procedure.h"

#include <optional>

#include "runtime/win32/form_events.h"
#include "runtime/win32/keyboard.h"
#include "runtime/win32/painting.h"
#include "runtime/win32/peer.h"
#include "runtime/win32/pump.h"

namespace swiftpatch {
namespace {

using Answer = std::optional<LRESULT>;

bool IsPressed(WPARAM wParam, LPARAM lParam) { return lParam != 0 && HIWORD(wParam) == BN_CLICKED; }

/// What a form answers to a message; empty leaves it to the system.
Answer RouteFormMessage(FormPeer& form, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            if (IsPressed(wParam, lParam)) {
                OnPressed(form, reinterpret_cast<HWND>(lParam));
            }
            return 0;
        case kPressedLater:
            OnPressedLater(form, reinterpret_cast<HWND>(lParam));
            return 0;
        case WM_TIMER:
            OnTimer(form, wParam);
            return 0;
        case WM_CLOSE:
            OnClose(form);
            return 0;
        case kCloseLater:
            OnCloseLater(form);
            return 0;
        case WM_QUERYENDSESSION:
            return OnQueryEndSession(form);
        case WM_ENDSESSION:
            OnEndSession(form, wParam != FALSE);
            return 0;
        case WM_ACTIVATE:
            OnActivate(form, LOWORD(wParam) != WA_INACTIVE);
            return 0;
        case WM_SETFOCUS:
            OnSetFocus(form);
            return 0;
        case WM_SETCURSOR:
            return OnSetCursor(form) ? Answer(TRUE) : Answer();
        case WM_SYSCOLORCHANGE:
            OnSystemColors(form);
            return 0;
        case WM_ERASEBKGND:
            return 1;  // WM_PAINT paints everything in one go.
        case WM_PAINT:
            PaintForm(form);
            return 0;
        case WM_PRINTCLIENT:
            PaintFormOn(form, reinterpret_cast<HDC>(wParam));
            return 0;
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            return reinterpret_cast<LRESULT>(BrushForControl(form, reinterpret_cast<HDC>(wParam),
                                                             reinterpret_cast<HWND>(lParam)));
        case WM_NCDESTROY:
            form.Leave();
            return Answer();
        default:
            return Answer();
    }
}

Answer RouteControlMessage(ControlPeer& peer, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (peer.control.Kind()) {
        case ComponentKind::kLabel:
            return AnswerAsLabel(peer, message, wParam, lParam);
        case ComponentKind::kImage:
            return AnswerAsImage(peer, message);
        case ComponentKind::kFrame:
            return AnswerAsFrame(peer, message, wParam, lParam);
        case ComponentKind::kTextBox:
            return AnswerAsTextBox(peer, message);
        default:
            return Answer();
    }
}

}  // namespace

LRESULT CALLBACK FormProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return Guarded([=] {
        FormPeer* const form = FormPeerOfWindow(window);
        const Answer answer =
            form == nullptr ? Answer() : RouteFormMessage(*form, message, wParam, lParam);
        return answer ? *answer : ::DefWindowProcA(window, message, wParam, lParam);
    });
}

LRESULT CALLBACK ControlProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return Guarded([=] {
        auto* const peer = reinterpret_cast<ControlPeer*>(::GetWindowLongA(window, GWL_USERDATA));
        if (peer == nullptr) {
            return ::DefWindowProcA(window, message, wParam, lParam);
        }
        if (message == WM_SETFOCUS) {
            FrameButtonForEnter(*peer->form, peer->control);
        }
        // The peer can go while the message is handled.
        const WNDPROC original = peer->original;
        const Answer answer = RouteControlMessage(*peer, message, wParam, lParam);
        return answer ? *answer : ::CallWindowProcA(original, window, message, wParam, lParam);
    });
}

}  // namespace swiftpatch
