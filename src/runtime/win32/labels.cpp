#include "runtime/win32/canvas.h"
#include "runtime/win32/colors.h"
#include "runtime/win32/fonts.h"
#include "runtime/win32/painting.h"
#include "runtime/win32/picture.h"

namespace swiftpatch {
namespace {

const Label& LabelOf(const ControlPeer& peer) { return static_cast<const Label&>(peer.control); }

/// Computed, not asked of the system: a control stays where it was laid out, and under Wine every
/// question about a window is a call to another process.
RECT PlaceOnForm(const ControlPeer& peer) {
    RECT place = ToPixels(peer.control.Position(), peer.form->baseUnits);
    if (const Frame* const container = peer.control.Container()) {
        const RECT around = ToPixels(container->Position(), peer.form->baseUnits);
        ::OffsetRect(&place, around.left, around.top);
    }
    return place;
}

bool Overlap(const ControlPeer& one, const ControlPeer& other) {
    const RECT first = PlaceOnForm(one);
    const RECT second = PlaceOnForm(other);
    RECT common;
    return ::IntersectRect(&common, &first, &second) != FALSE;
}

ControlPeer* AsShownLabel(const Control& control) {
    const bool shown = control.Kind() == ComponentKind::kLabel && control.Visible;
    return shown ? PeerOf(control) : nullptr;
}

void DrawLabel(const ControlPeer& peer, HDC device, RECT where) {
    const Label& label = LabelOf(peer);
    const Look& look = label.DesignLook();
    if (label.Background == BackStyle::kOpaque) {
        ::SetBkColor(device, ToColorRef(label.BackColor));
        ::ExtTextOutA(device, 0, 0, ETO_OPAQUE, &where, nullptr, 0, nullptr);
    }
    const UINT format = DT_WORDBREAK | DT_EXPANDTABS | (look.centered ? DT_CENTER : DT_LEFT) |
                        (look.mnemonics ? 0 : DT_NOPREFIX);
    const std::string& text = label.Caption.Get();
    ::SetBkMode(device, TRANSPARENT);
    ::SetTextColor(device,
                   label.Enabled ? ToColorRef(label.ForeColor) : ::GetSysColor(COLOR_GRAYTEXT));
    const HGDIOBJ before =
        ::SelectObject(device, peer.ownFont ? peer.ownFont.Get() : peer.form->font.Get());
    ::DrawTextA(device, text.data(), static_cast<int>(text.size()), &where, format);
    ::SelectObject(device, before);
}

/// Draws what lies behind a control, in the form's coordinates: the form's background, and the
/// labels that come before it in the form's order.
void DrawBehind(const ControlPeer& peer, HDC device) {
    PaintFormOn(*peer.form, device);
    for (const Control* control : peer.form->form.Controls()) {
        if (control == &peer.control) {
            return;
        }
        const ControlPeer* const below = AsShownLabel(*control);
        if (below != nullptr && Overlap(*below, peer)) {
            DrawLabel(*below, device, PlaceOnForm(*below));
        }
    }
}

void PaintLabel(const ControlPeer& peer) {
    const Canvas canvas(peer.window);
    const RECT place = PlaceOnForm(peer);
    ::SetViewportOrgEx(canvas.Device(), -place.left, -place.top, nullptr);
    DrawBehind(peer, canvas.Device());
    DrawLabel(peer, canvas.Device(), place);
}

void PaintImage(ControlPeer& peer) {
    const Canvas canvas(peer.window);
    const RECT place = PlaceOnForm(peer);
    ::SetViewportOrgEx(canvas.Device(), -place.left, -place.top, nullptr);
    PaintFormOn(*peer.form, canvas.Device());
    ::SetViewportOrgEx(canvas.Device(), 0, 0, nullptr);
    DrawPicture(peer.picture.Get(), canvas.Device(), canvas.Client());
}

}  // namespace

void LabelChanged(ControlPeer& label) {
    bool above = false;
    for (const Control* control : label.form->form.Controls()) {
        above = above || control == &label.control;
        ControlPeer* const peer = above ? AsShownLabel(*control) : nullptr;
        if (peer != nullptr && (peer == &label || Overlap(label, *peer))) {
            peer->changed = true;
            ::InvalidateRect(peer->window, nullptr, FALSE);
        }
    }
}

void RefreshLabel(ControlPeer& label) {
    if (label.changed) {
        ::UpdateWindow(label.window);
    }
}

std::optional<LRESULT> AnswerAsLabel(ControlPeer& peer, UINT message, WPARAM wParam,
                                     LPARAM lParam) {
    switch (message) {
        case WM_SETTEXT:
            // The class's own procedure would paint at once, without what lies behind the label.
            return ::DefWindowProcA(peer.window, message, wParam, lParam);
        case WM_ENABLE:
            LabelChanged(peer);
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
            peer.changed = false;
            peer.form->backgroundStale = false;
            PaintLabel(peer);
            return 0;
        default:
            return {};
    }
}

std::optional<LRESULT> AnswerAsImage(ControlPeer& peer, UINT message) {
    switch (message) {
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
            peer.form->backgroundStale = false;
            PaintImage(peer);
            return 0;
        default:
            return {};
    }
}

}  // namespace swiftpatch
