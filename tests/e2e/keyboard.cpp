#include "e2e/keyboard.h"

#include <vector>

#include "e2e/text.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kSoon{20000};

HWND Focus() {
    GUITHREADINFO info = {};
    info.cbSize = sizeof(info);
    const DWORD thread = GetWindowThreadProcessId(GetForegroundWindow(), nullptr);
    return thread != 0 && GetGUIThreadInfo(thread, &info) != 0 ? info.hwndFocus : nullptr;
}

bool IsOf(const Updater& updater, HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process == updater.Running().Id();
}

std::string Description(HWND window) {
    return window == nullptr
               ? "nothing"
               : Utf8(ClassOf(GetAncestor(window, GA_ROOT))) + " " +
                     std::to_string(GetDlgCtrlID(window)) + " \"" + OneLine(TextOf(window)) + "\"";
}

template <class Condition>
void AwaitKeyboard(const Updater& updater, const std::string& where, Condition condition) {
    if (!WaitUntil([&] { return IsOf(updater, Focus()) && condition(Focus()); }, kSoon)) {
        throw DriveError("the keyboard never came to " + where + "; it is at " +
                         Description(Focus()) + "; " + updater.Describe());
    }
}

INPUT Stroke(WORD key, DWORD flags) {
    INPUT stroke = {};
    stroke.type = INPUT_KEYBOARD;
    stroke.ki.wVk = key;
    stroke.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    stroke.ki.dwFlags = flags;
    return stroke;
}

}  // namespace

void PressKey(const Updater& updater, WORD key, Shift shift) {
    AwaitKeyboard(updater, "the updater", [](HWND) { return true; });
    std::vector<INPUT> strokes{Stroke(key, 0), Stroke(key, KEYEVENTF_KEYUP)};
    if (shift == Shift::kDown) {
        strokes.insert(strokes.begin(), Stroke(VK_SHIFT, 0));
        strokes.push_back(Stroke(VK_SHIFT, KEYEVENTF_KEYUP));
    }
    SendInput(static_cast<UINT>(strokes.size()), strokes.data(), sizeof(INPUT));
}

void AwaitFocus(const Updater& updater, const Control& control) {
    AwaitKeyboard(updater, control.name, [&](HWND focus) {
        return GetDlgCtrlID(focus) == control.id &&
               ClassOf(GetAncestor(focus, GA_ROOT)) == control.form;
    });
}

void AwaitFocus(const Updater& updater, const Box& box) {
    AwaitKeyboard(updater, "the box",
                  [&](HWND focus) { return GetAncestor(focus, GA_ROOT) == box.window; });
}

}  // namespace swiftpatch::e2e
