#include "e2e/updater.h"

#include <commctrl.h>

#include <algorithm>

#include "e2e/text.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kLongestReaction{5000};

bool CanBePressed(HWND button) {
    return IsWindowVisible(button) != 0 && IsWindowEnabled(button) != 0 &&
           IsWindowEnabled(GetAncestor(button, GA_ROOT)) != 0;
}

LRESULT Ask(HWND window, UINT message) {
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(window, message, 0, 0, SMTO_ABORTIFHUNG, 2000, &answer);
    return static_cast<LRESULT>(answer);
}

// A box with one button has it under another id on some systems, so that Esc works there.
HWND ButtonOf(const Box& box, int button) {
    const bool known = std::count(box.buttons.begin(), box.buttons.end(), button) != 0;
    const bool single = button == IDOK && box.buttons.size() == 1;
    return GetDlgItem(box.window, !known && single ? box.buttons.front() : button);
}

}  // namespace

HWND Updater::Window(const wchar_t* form) const {
    for (const HWND window : VisibleWindowsOf(process_.Id())) {
        if (ClassOf(window) == form) {
            return window;
        }
    }
    return nullptr;
}

HWND Updater::AwaitWindow(const wchar_t* form, milliseconds limit) const {
    HWND window = nullptr;
    if (!WaitUntil([&] { return (window = Window(form)) != nullptr; }, limit)) {
        throw DriveError("no window " + Utf8(form) + " came up; " + Describe());
    }
    return window;
}

void Updater::AwaitNoWindow(const wchar_t* form, milliseconds limit) const {
    if (!WaitUntil([&] { return Window(form) == nullptr; }, limit)) {
        throw DriveError("the window " + Utf8(form) + " stays; " + Describe());
    }
}

std::string Updater::Caption(const wchar_t* form) const { return TextOf(Window(form)); }

HWND Updater::Find(const Control& control) const {
    for (const HWND part : WindowsInside(Window(control.form))) {
        if (GetDlgCtrlID(part) == control.id) {
            return part;
        }
    }
    return nullptr;
}

std::string Updater::Text(const Control& control) const { return TextOf(Find(control)); }

bool Updater::Visible(const Control& control) const { return IsWindowVisible(Find(control)) != 0; }

bool Updater::Enabled(const Control& control) const { return IsWindowEnabled(Find(control)) != 0; }

bool Updater::Checked(const Control& control) const {
    return Ask(Find(control), BM_GETCHECK) == BST_CHECKED;
}

int Updater::Progress(const Control& control) const {
    return static_cast<int>(Ask(Find(control), PBM_GETPOS));
}

void Updater::AwaitText(const Control& control, const std::string& text, milliseconds limit) const {
    bool there = false;
    WaitUntil(
        [&] {
            there = Text(control) == text;
            return there || MessageBoxNow() || !process_.Running();
        },
        limit);
    if (!there) {
        throw DriveError(std::string(control.name) + " never showed \"" + OneLine(text) + "\"; " +
                         Describe());
    }
}

void Updater::AwaitEnabled(const Control& control, milliseconds limit) const {
    if (!WaitUntil([&] { return CanBePressed(Find(control)); }, limit)) {
        throw DriveError(std::string(control.name) + " cannot be pressed; " + Describe());
    }
}

void Updater::Press(const Control& control) const {
    AwaitEnabled(control, kLongestReaction);
    ClickOn(Find(control));
}

void Updater::CloseByCorner(const wchar_t* form) const {
    PostMessageW(Window(form), WM_SYSCOMMAND, SC_CLOSE, 0);
}

void Updater::CloseAllWindows() const {
    for (const HWND window : TopLevelWindowsOf(process_.Id())) {
        PostMessageW(window, WM_CLOSE, 0, 0);
    }
}

std::optional<Box> Updater::MessageBoxNow() const {
    for (const HWND window : VisibleWindowsOf(process_.Id())) {
        if (IsMessageBox(window)) {
            return ReadMessageBox(window);
        }
    }
    return std::nullopt;
}

Box Updater::AwaitMessageBox(milliseconds limit) const {
    std::optional<Box> box;
    // A box is complete once it has a button: its window is there a moment before its parts.
    const auto complete = [&] {
        box = MessageBoxNow();
        return box && !box->buttons.empty() && !box->text.empty();
    };
    if (!WaitUntil(complete, limit)) {
        throw DriveError("no message box came up; " + Describe());
    }
    return *box;
}

void Updater::Answer(const Box& box, int button) const {
    const HWND window = ButtonOf(box, button);
    if (window == nullptr) {
        throw DriveError("the box has no button " + std::to_string(button) + ": " + box.text);
    }
    ClickOn(window);
    if (!WaitUntil([&] { return IsWindowVisible(box.window) == 0; }, kLongestReaction)) {
        throw DriveError("the box does not go: " + OneLine(box.text));
    }
}

void Updater::AwaitEnd(milliseconds limit) const {
    if (!process_.WaitForEnd(limit)) {
        throw DriveError("the program does not end; " + Describe());
    }
}

std::string Updater::Describe() const {
    if (!process_.Running()) {
        return "the program has ended with " + std::to_string(process_.ExitCode());
    }
    std::string description = "the program shows";
    for (const HWND window : VisibleWindowsOf(process_.Id())) {
        const std::wstring form = ClassOf(window);
        description += "\n  " + Utf8(form) + " \"" + OneLine(TextOf(window)) + "\"";
        for (const HWND part : WindowsInside(window)) {
            if (IsWindowVisible(part) != 0) {
                description += "\n    " + NameOf(form, GetDlgCtrlID(part)) +
                               (IsWindowEnabled(part) != 0 ? "" : " (disabled)") + " \"" +
                               OneLine(TextOf(part)) + "\"";
            }
        }
    }
    return description;
}

}  // namespace swiftpatch::e2e
