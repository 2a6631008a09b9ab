#include "runtime/component.h"

#include <algorithm>

#include "runtime/internal/text_tail.h"
#include "runtime/win32/animation.h"
#include "runtime/win32/control_windows.h"
#include "runtime/win32/form_events.h"
#include "runtime/win32/nt_family.h"
#include "runtime/win32/painting.h"
#include "runtime/win32/taskbar.h"

namespace swiftpatch {
namespace {

/// A window's text ends at its first NUL; blanks keep what comes after it.
void SetText(HWND window, std::string_view shown) {
    std::string text(shown);
    std::replace(text.begin(), text.end(), '\0', ' ');
    ::SetWindowTextA(window, text.c_str());
}

/// A box takes up to 64 KiB there, some of which it may need for itself. What has been written last
/// is at the end of a text.
std::string_view WhatABoxHolds(std::string_view text) {
    constexpr std::size_t kMostOnWindows95 = 60 * 1024;
    return IsNtFamily() ? text : TextTail(text, kMostOnWindows95);
}

void SetVisible(const ControlPeer& peer, bool visible) {
    if (!visible) {
        MoveFocusFrom(*peer.form, peer.window);
    }
    ::ShowWindow(peer.window, visible ? SW_SHOWNA : SW_HIDE);
}

void SetEnabled(const ControlPeer& peer, bool enabled) {
    if (!enabled) {
        MoveFocusFrom(*peer.form, peer.window);
    }
    ::EnableWindow(peer.window, enabled ? TRUE : FALSE);
}

/// A value, or one of the bounds that a progress bar has for it.
void SetNumber(ControlPeer& peer, PropertyId id, std::int32_t value) {
    if (peer.control.Kind() == ComponentKind::kCheckBox) {
        ::SendMessageA(peer.window, BM_SETCHECK, static_cast<WPARAM>(value), 0);
    } else if (id == PropertyId::kValue) {
        ::SendMessageA(peer.window, PBM_SETPOS, static_cast<WPARAM>(value), 0);
    } else {
        const auto& bar = static_cast<const ProgressBar&>(peer.control);
        ::SendMessageA(peer.window, PBM_SETRANGE32, static_cast<WPARAM>(bar.Min.Get()),
                       bar.Max.Get());
    }
}

void SetControlProperty(ControlPeer& peer, PropertyId id, const PropertyValue& value) {
    switch (id) {
        case PropertyId::kCaption:
            SetText(peer.window, std::get<std::string_view>(value));
            break;
        case PropertyId::kText:
            SetText(peer.window, WhatABoxHolds(std::get<std::string_view>(value)));
            break;
        case PropertyId::kVisible:
            SetVisible(peer, std::get<bool>(value));
            break;
        case PropertyId::kEnabled:
            SetEnabled(peer, std::get<bool>(value));
            break;
        case PropertyId::kValue:
        case PropertyId::kMin:
        case PropertyId::kMax:
            SetNumber(peer, id, std::get<std::int32_t>(value));
            break;
        case PropertyId::kFontSize:
            ApplyFont(peer);
            break;
        case PropertyId::kAutoPlay:
            PlayOrStop(static_cast<const Animation&>(peer.control));
            break;
        default:
            break;  // Colours: the painting below.
    }
    if (peer.control.Kind() == ComponentKind::kLabel) {
        LabelChanged(peer);
    }
}

/// The system asks for the pointer's shape only when it moves.
void ShowPointer(const FormPeer& peer) {
    POINT place;
    if (::GetCursorPos(&place) && FormPeerAround(::WindowFromPoint(place)) == &peer) {
        ::PostMessageA(peer.window, WM_SETCURSOR, reinterpret_cast<WPARAM>(peer.window),
                       MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    }
}

void SetFormProperty(FormPeer& peer, PropertyId id, const PropertyValue& value) {
    switch (id) {
        case PropertyId::kCaption:
            SetText(peer.window, std::get<std::string_view>(value));
            break;
        case PropertyId::kBackColor:
            BackColorChanged(peer);
            break;
        case PropertyId::kMousePointer:
            ShowPointer(peer);
            break;
        case PropertyId::kTaskbarProgress:
            ShowOnTaskbar(peer.window, std::get<std::int32_t>(value));
            break;
        default:
            break;
    }
}

}  // namespace

void Component::PropertySet(PropertyId id, const PropertyValue& value, bool changed) {
    if (!changed || !peer_ || peer_->window == nullptr) {
        return;
    }
    switch (kind_) {
        case ComponentKind::kForm:
            SetFormProperty(static_cast<FormPeer&>(*peer_), id, value);
            break;
        case ComponentKind::kTimer:
            static_cast<TimerPeer&>(*peer_).Follow();
            break;
        default:
            SetControlProperty(static_cast<ControlPeer&>(*peer_), id, value);
            break;
    }
}

}  // namespace swiftpatch
