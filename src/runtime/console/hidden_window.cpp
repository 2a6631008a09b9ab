// The only window of this program is for messages alone: not even a tool that shows hidden windows
// can bring it up, and the run needs no screen.
#include "runtime/win32/hidden_window.h"

namespace swiftpatch {
namespace {

HWND CreateBelow(HWND parent, const char* windowClass) {
    return ::CreateWindowExA(0, windowClass, "", WS_POPUP, 0, 0, 0, 0, parent, nullptr,
                             ::GetModuleHandleA(nullptr), nullptr);
}

}  // namespace

HWND CreateHiddenWindow(const char* windowClass) {
    const HWND window = CreateBelow(HWND_MESSAGE, windowClass);
    // Before Windows 2000 there are none of these. This one is made without being shown.
    return window != nullptr ? window : CreateBelow(nullptr, windowClass);
}

}  // namespace swiftpatch
