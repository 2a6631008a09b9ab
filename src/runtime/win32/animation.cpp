#include "runtime/win32/animation.h"

#include "runtime/win32/peer.h"

namespace swiftpatch {

void PlayOrStop(const Animation& animation) {
    const HWND window = PeerOf(animation)->window;
    if (animation.AutoPlay) {
        constexpr WPARAM kForEver = static_cast<WPARAM>(-1);
        ::SendMessageA(window, ACM_PLAY, kForEver, MAKELPARAM(0, 0xFFFF));
    } else {
        ::SendMessageA(window, ACM_STOP, 0, 0);
    }
}

void Animation::Open(const std::string& path) {
    const ControlPeer* const own = PeerOf(*this);
    if (own == nullptr || own->window == nullptr) {
        return;
    }
    if (::SendMessageA(own->window, ACM_OPENA, 0, reinterpret_cast<LPARAM>(path.c_str())) != 0 &&
        AutoPlay) {
        PlayOrStop(*this);
    }
}

void Animation::Stop() {
    const ControlPeer* const own = PeerOf(*this);
    if (own != nullptr && own->window != nullptr) {
        ::SendMessageA(own->window, ACM_STOP, 0, 0);
        ::SendMessageA(own->window, ACM_OPENA, 0, 0);
    }
}

}  // namespace swiftpatch
