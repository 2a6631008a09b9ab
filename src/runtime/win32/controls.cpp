#include "runtime/controls.h"

#include "runtime/win32/form_events.h"
#include "runtime/win32/painting.h"

namespace swiftpatch {

void Control::Refresh() {
    ControlPeer* const own = PeerOf(*this);
    if (own == nullptr || own->window == nullptr) {
        return;
    }
    if (Kind() == ComponentKind::kLabel) {
        RefreshLabel(*own);
    } else {
        ::RedrawWindow(own->window, nullptr, nullptr,
                       RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    }
}

void Control::SetFocus() {
    const ControlPeer* const own = PeerOf(*this);
    if (own != nullptr && own->window != nullptr) {
        GiveFocusTo(*own->form, own->window);
    }
}

}  // namespace swiftpatch
