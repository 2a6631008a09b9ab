#include "runtime/desktop.h"
#include "runtime/win32/win32.h"

namespace swiftpatch {

std::int32_t SendMessageA(WindowHandle window, std::uint32_t message, std::uint32_t wParam,
                          std::int32_t lParam) {
    return ::SendMessageA(reinterpret_cast<HWND>(static_cast<LONG_PTR>(window)), message, wParam,
                          lParam);
}

}  // namespace swiftpatch
