#include "runtime/msgbox.h"

#include "runtime/app.h"
#include "runtime/win32/peer.h"
#include "runtime/win32/pump.h"

namespace swiftpatch {

MsgBoxAnswer MsgBox(const std::string& text, int style, const std::string& title) {
    ThrowIfOver();
    const HWND owner = OwnerForBox();
    // The box disables its owner itself.
    const OthersDisabled others(owner);
    const int pressed =
        ::MessageBoxA(owner, text.c_str(), (title.empty() ? App::Title() : title).c_str(),
                      static_cast<UINT>(style));
    ThrowIfOver();
    // What comes next may keep the thread for long, as a program does that is asked to close: where
    // the box was there would be nothing.
    ::RedrawWindow(owner, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    if (pressed != IDYES && pressed != IDNO) {
        return MsgBoxAnswer::kOk;
    }
    return pressed == IDYES ? MsgBoxAnswer::kYes : MsgBoxAnswer::kNo;
}

}  // namespace swiftpatch
