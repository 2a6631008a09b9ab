#include "runtime/win32/accessibility.h"

#include <array>

// Needs the system's other headers before it.
#include <oleacc.h>

namespace swiftpatch {
namespace {

/// The service by which a program names what has no text of its own; null before Windows XP.
IAccPropServices* NamingService() {
    static IAccPropServices* const service = [] {
        void* found = nullptr;
        ::CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER,
                           IID_IAccPropServices, &found);
        return static_cast<IAccPropServices*>(found);
    }();
    return service;
}

void Annotate(HWND window, const char* name) {
    constexpr int kLongestName = 64;
    std::array<wchar_t, kLongestName> wide{};
    if (NamingService() != nullptr &&
        ::MultiByteToWideChar(CP_ACP, 0, name, -1, wide.data(), kLongestName) != 0) {
        NamingService()->SetHwndPropStr(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF,
                                        PROPID_ACC_NAME, wide.data());
    }
}

}  // namespace

void NameForScreenReaders(const ControlPeer& peer) {
    const char* const name = peer.control.AccessibleName;
    if (name == nullptr) {
        return;
    }
    Annotate(peer.window, name);
    if (peer.control.Kind() != ComponentKind::kTextBox) {
        // Nobody sees this text, but a system without the service takes it for the name.
        ::SetWindowTextA(peer.window, name);
    }
}

}  // namespace swiftpatch
