#include <windows.h>

#include "plain.h"

namespace {

constexpr int kWidth = 600;
constexpr int kHeight = 400;

HWND Show(const wchar_t* windowClass, int colour) {
    WNDCLASSW description = {};
    description.lpfnWndProc = DefWindowProcW;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hbrBackground = GetSysColorBrush(colour);
    description.lpszClassName = windowClass;
    RegisterClassW(&description);
    const int left = (GetSystemMetrics(SM_CXSCREEN) - kWidth) / 2;
    const int top = (GetSystemMetrics(SM_CYSCREEN) - kHeight) / 2;
    const HWND window = CreateWindowExW(0, windowClass, L"bench", WS_POPUP, left, top, kWidth,
                                        kHeight, nullptr, nullptr, description.hInstance, nullptr);
    ShowWindow(window, SW_SHOW);
    return window;
}

void HandleMessages(UINT milliseconds) {
    const UINT_PTR timer = SetTimer(nullptr, 0, milliseconds, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (message.message == WM_TIMER && message.wParam == timer) {
            break;
        }
        DispatchMessageW(&message);
    }
    KillTimer(nullptr, timer);
}

}  // namespace

bool ShowWindows(const Arguments& arguments) {
    const UINT first = std::stoul(arguments.at(0));
    const UINT all = std::stoul(arguments.at(1));
    const HWND window = Show(L"benchFirst", COLOR_WINDOW);
    HandleMessages(first);
    ShowWindow(window, SW_HIDE);
    if (all > first) {
        Show(L"benchSecond", COLOR_BTNFACE);
        HandleMessages(all - first);
    }
    return window != nullptr;
}
