#include "runtime/win32/paint_pace.h"

#include "runtime/controls.h"
#include "runtime/win32/painting.h"

namespace swiftpatch {
namespace {

constexpr DWORD kPause = 100;  // Milliseconds.

void Show(ControlPeer& peer) {
    peer.late = false;
    peer.shownAt = ::GetTickCount();
    if (peer.control.Kind() == ComponentKind::kLabel) {
        LabelChanged(peer);
    } else {
        const auto& bar = static_cast<const ProgressBar&>(peer.control);
        ::SendMessageA(peer.window, PBM_SETPOS, static_cast<WPARAM>(bar.Value.Get()), 0);
    }
}

void ShowLateChangesOf(FormPeer& form) {
    if (!form.late) {
        return;
    }
    form.late = false;
    ::KillTimer(form.window, kLateChangesTimer);
    for (const Control* control : form.form.Controls()) {
        ControlPeer* const peer = PeerOf(*control);
        if (peer != nullptr && peer->late) {
            Show(*peer);
        }
    }
}

}  // namespace

void ShowChange(ControlPeer& control) {
    if (::GetTickCount() - control.shownAt >= kPause) {
        Show(control);
        return;
    }
    control.late = true;
    if (!control.form->late) {
        control.form->late = true;
        ::SetTimer(control.form->window, kLateChangesTimer, kPause, nullptr);
    }
}

void ShowLateChanges() {
    for (FormPeer* const form : LoadedForms()) {
        ShowLateChangesOf(*form);
    }
}

void OnLateChangesTimer(FormPeer& form) { ShowLateChangesOf(form); }

}  // namespace swiftpatch
