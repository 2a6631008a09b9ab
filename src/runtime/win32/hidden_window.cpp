#include "runtime/win32/hidden_window.h"

namespace swiftpatch {

/// An ordinary window: Windows 95 has no windows for messages alone.
HWND CreateHiddenWindow(const char* windowClass) {
    return ::CreateWindowExA(0, windowClass, "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                             ::GetModuleHandleA(nullptr), nullptr);
}

}  // namespace swiftpatch
