#include "e2e/monkey.h"

#include <array>

#include "e2e/window_view.h"

namespace swiftpatch::e2e {
namespace {

// Everything is posted or sent without waiting: a person does not wait for an answer either.
void Post(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    PostMessageW(window, message, wParam, lParam);
}

LPARAM Place(int x, int y) { return MAKELPARAM(x, y); }

}  // namespace

std::map<std::string, int>& Monkey::Deeds() {
    static std::map<std::string, int> deeds;
    return deeds;
}

HWND Monkey::Pick(const std::vector<HWND>& windows) {
    return windows.empty()
               ? nullptr
               : windows[static_cast<std::size_t>(Below(static_cast<int>(windows.size())))];
}

void Monkey::Act() {
    const HWND window = Pick(VisibleWindowsOf(program_.Id()));
    if (window == nullptr) {
        return;
    }
    const int dice = Below(100);
    if (dice < 45) {
        Click(window);
    } else if (dice < 70) {
        Press(window);
    } else if (dice < 72) {
        Close(window);
    } else if (dice < 74) {
        AskForTheSession(window);
    } else if (dice < 88) {
        Resize(window);
    } else {
        MoveFocus(window);
    }
}

// On any part, whether or not it takes input: the system does not send what a disabled one gets.
void Monkey::Click(HWND window) {
    ++Deeds()["clicks"];
    std::vector<HWND> parts = WindowsInside(window);
    parts.push_back(window);
    const HWND part = Pick(parts);
    if (IsWindowEnabled(part) == 0 || IsWindowEnabled(window) == 0) {
        return;
    }
    RECT area = {};
    GetClientRect(part, &area);
    const LPARAM place = Place(Below(area.right + 1), Below(area.bottom + 1));
    const bool twice = Below(4) == 0;
    const bool right = Below(8) == 0;
    Post(part, right ? WM_RBUTTONDOWN : WM_LBUTTONDOWN, right ? MK_RBUTTON : MK_LBUTTON, place);
    Post(part, right ? WM_RBUTTONUP : WM_LBUTTONUP, 0, place);
    if (twice) {
        Post(part, WM_LBUTTONDBLCLK, MK_LBUTTON, place);
        Post(part, WM_LBUTTONUP, 0, place);
    }
}

void Monkey::Press(HWND window) {
    ++Deeds()["keys"];
    constexpr std::array<WPARAM, 16> kKeys{VK_RETURN, VK_ESCAPE, VK_SPACE, VK_TAB, VK_TAB, VK_LEFT,
                                           VK_RIGHT,  VK_UP,     VK_DOWN,  VK_F10, VK_F4,  'X',
                                           'N',       'J',       VK_PRIOR, VK_NEXT};
    std::vector<HWND> parts = WindowsInside(window);
    parts.push_back(window);
    const HWND part = Pick(parts);
    const WPARAM key = kKeys[static_cast<std::size_t>(Below(static_cast<int>(kKeys.size())))];
    if (IsWindowEnabled(part) == 0 || IsWindowEnabled(window) == 0) {
        return;
    }
    const bool withAlt = Below(12) == 0;
    const LPARAM down = withAlt ? 1 << 29 : 1;
    const LPARAM up = static_cast<LPARAM>(0xC0000001U);
    Post(part, withAlt ? WM_SYSKEYDOWN : WM_KEYDOWN, key, down);
    Post(part, withAlt ? WM_SYSKEYUP : WM_KEYUP, key, up);
}

void Monkey::Close(HWND window) {
    ++Deeds()["closings"];
    if (Below(2) == 0) {
        Post(window, WM_CLOSE);
    } else {
        Post(window, WM_SYSCOMMAND, SC_CLOSE);
    }
}

void Monkey::AskForTheSession(HWND window) {
    ++Deeds()["questions for the end of the session"];
    SendNotifyMessageW(window, WM_QUERYENDSESSION, 0, 0);
    const int then = Below(6);
    if (then == 0) {
        ++Deeds()["ends of the session"];
        SendNotifyMessageW(window, WM_ENDSESSION, TRUE, 0);
    } else if (then < 3) {
        SendNotifyMessageW(window, WM_ENDSESSION, FALSE, 0);
    }
}

void Monkey::Resize(HWND window) {
    ++Deeds()["resizes"];
    switch (Below(5)) {
        case 0:
            Post(window, WM_SYSCOMMAND, SC_MINIMIZE);
            break;
        case 1:
        case 2:
            Post(window, WM_SYSCOMMAND, SC_RESTORE);
            break;
        default:
            SetWindowPos(window, nullptr, Below(400), Below(300), 20 + Below(900), 20 + Below(700),
                         SWP_NOZORDER | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
            break;
    }
}

void Monkey::MoveFocus(HWND window) {
    ++Deeds()["moves of the focus"];
    switch (Below(3)) {
        case 0:
            Post(window, WM_ACTIVATE, static_cast<WPARAM>(Below(3)));
            break;
        case 1:
            Post(window, WM_SETFOCUS);
            break;
        default: {
            const HWND part = Pick(WindowsInside(window));
            Post(part != nullptr ? part : window, Below(2) == 0 ? WM_SETFOCUS : WM_KILLFOCUS);
            break;
        }
    }
}

milliseconds Monkey::AnswerTime(const Process& program, milliseconds limit) {
    const std::vector<HWND> windows = VisibleWindowsOf(program.Id());
    const SteadyTime start = std::chrono::steady_clock::now();
    if (!windows.empty()) {
        DWORD_PTR ignored = 0;
        SendMessageTimeoutW(windows.front(), WM_NULL, 0, 0, SMTO_NORMAL,
                            static_cast<UINT>(limit.count()), &ignored);
    }
    return std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - start);
}

}  // namespace swiftpatch::e2e
