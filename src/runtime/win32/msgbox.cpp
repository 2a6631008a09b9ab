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
    if (pressed != IDYES && pressed != IDNO) {
        return MsgBoxAnswer::kOk;
    }
    return pressed == IDYES ? MsgBoxAnswer::kYes : MsgBoxAnswer::kNo;
}

}  // namespace swiftpatch
