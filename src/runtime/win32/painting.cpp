#include "runtime/win32/painting.h"

#include <cstdlib>

#include "runtime/win32/canvas.h"
#include "runtime/win32/colors.h"

// A form's background is painted several times: on the form itself, and again behind each control
// that one can look through. A child window cannot be transparent here, so a label paints what lies
// under it (the form, then the labels that come before it) into its own window first. The system's
// static control will not do: it erases before it paints, paints at once with every change of its
// text, and shows the form's plain colour behind the letters.
//
// What is painted is put together in a picture in memory, which lives for one WM_PAINT (Canvas),
// and reaches the screen in one piece. A form keeps one brush, for the controls of the system's
// that ask for a colour; it lives until the colour is another one.
//
// A new background invalidates nine windows, and the splash window's fade sets hundreds: so a
// colour that is close to the one on the screen waits for a moment on a timer of the form's, and
// the next one usually replaces it. All of this happens on the one thread, in the pumps.

namespace swiftpatch {
namespace {

/// While a colour is this near to the one on the screen, what comes next is waited for a moment: a
/// fade goes through hundreds of colours, and each painting of a form costs milliseconds.
constexpr int kNearColor = 16;
constexpr UINT kColorWait = 50;  // Milliseconds.

bool IsNear(COLORREF one, COLORREF other) {
    const auto isNear = [](int first, int second) { return std::abs(first - second) < kNearColor; };
    return other != CLR_INVALID && isNear(GetRValue(one), GetRValue(other)) &&
           isNear(GetGValue(one), GetGValue(other)) && isNear(GetBValue(one), GetBValue(other));
}

void Fill(HDC device, const RECT& where, COLORREF color) {
    // An opaque text without letters is the one way to fill that needs no brush.
    ::SetBkColor(device, color);
    ::ExtTextOutA(device, 0, 0, ETO_OPAQUE, &where, nullptr, 0, nullptr);
}

void PaintBoxes(const Form& form, HDC device, const RECT& client) {
    const int scale = form.ScaleHeight() > 0 ? form.ScaleHeight() : static_cast<int>(client.bottom);
    for (const PaintedBox& box : form.Painting()) {
        const RECT where{box.left, ::MulDiv(box.top, client.bottom, scale), box.right,
                         ::MulDiv(box.bottom, client.bottom, scale)};
        if (::RectVisible(device, &where)) {
            Fill(device, where, ToColorRef(box.color));
        }
    }
}

bool IsOnBackground(const Control& control) {
    switch (control.Kind()) {
        case ComponentKind::kLabel:
        case ComponentKind::kCheckBox:
        case ComponentKind::kFrame:
        case ComponentKind::kImage:
            return true;
        default:
            return false;
    }
}

}  // namespace

void PaintFormOn(const FormPeer& form, HDC device) {
    RECT client;
    ::GetClientRect(form.window, &client);
    Fill(device, client, ToColorRef(form.form.BackColor));
    PaintBoxes(form.form, device, client);
}

void PaintForm(FormPeer& form) {
    form.backgroundStale = false;
    form.shownColor = ToColorRef(form.form.BackColor);
    const Canvas canvas(form.window);
    PaintFormOn(form, canvas.Device());
}

HBRUSH BrushForControl(FormPeer& form, HDC device, HWND control) {
    form.backgroundStale = false;
    const Control* const known = ControlOfWindow(control);
    if (known != nullptr && known->Kind() == ComponentKind::kTextBox) {
        // A read-only box asks as if it were a label; it is to look like any other box.
        ::SetTextColor(device, ::GetSysColor(COLOR_WINDOWTEXT));
        ::SetBkColor(device, ::GetSysColor(COLOR_WINDOW));
        return ::GetSysColorBrush(COLOR_WINDOW);
    }
    const COLORREF color = ToColorRef(form.form.BackColor);
    if (!form.brush || form.brushColor != color) {
        form.brush.Reset(::CreateSolidBrush(color));
        form.brushColor = color;
    }
    ::SetTextColor(device, ::GetSysColor(COLOR_BTNTEXT));
    ::SetBkColor(device, color);
    return form.brush.Get();
}

void BackgroundChanged(FormPeer& form) {
    if (form.backgroundStale) {
        return;
    }
    form.backgroundStale = true;
    ::InvalidateRect(form.window, nullptr, FALSE);
    for (const Control* control : form.form.Controls()) {
        if (IsOnBackground(*control) && PeerOf(*control) != nullptr) {
            ::InvalidateRect(PeerOf(*control)->window, nullptr, FALSE);
        }
    }
}

void BackColorChanged(FormPeer& form) {
    if (IsNear(ToColorRef(form.form.BackColor), form.shownColor)) {
        ::SetTimer(form.window, kBackColorTimer, kColorWait, nullptr);
    } else {
        BackgroundChanged(form);
    }
}

void OnBackColorTimer(FormPeer& form) {
    ::KillTimer(form.window, kBackColorTimer);
    BackgroundChanged(form);
}

std::optional<LRESULT> AnswerAsFrame(const ControlPeer& peer, UINT message, WPARAM wParam,
                                     LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
        case WM_NOTIFY:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            return ::SendMessageA(peer.form->window, message, wParam, lParam);
        case WM_ERASEBKGND: {
            // The form leaves out what its controls cover, and a group box paints its line only.
            peer.form->backgroundStale = false;
            RECT client;
            ::GetClientRect(peer.window, &client);
            Fill(reinterpret_cast<HDC>(wParam), client, ToColorRef(peer.form->form.BackColor));
            return 1;
        }
        default:
            return {};
    }
}

std::optional<LRESULT> AnswerAsTextBox(const ControlPeer& peer, UINT message) {
    if (message == WM_GETDLGCODE && peer.control.DesignLook().multiLine) {
        // Of its own accord a box of several lines keeps Tab, and Esc makes it close the form.
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    }
    return {};
}

}  // namespace swiftpatch
