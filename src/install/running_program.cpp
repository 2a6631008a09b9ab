#include "install/running_program.h"

#include <string>

#include "mainwindow/frmSwiftPatch.h"
#include "net/wait.h"
#include "runtime/desktop.h"
#include "runtime/events.h"
#include "runtime/msgbox.h"
#include "runtime/numbers.h"
#include "runtime/profile.h"
#include "shared/branding.h"

namespace swiftpatch {
namespace {

/// Of the main program's windows: their class, and a part of their titles.
constexpr const char* kWindowClass = SWIFTPATCH_WINDOW_CLASS;
constexpr const char* kTitlePart = SWIFTPATCH_WINDOW_TITLE;
constexpr std::size_t kTextLength = 128;

constexpr std::uint32_t kWmClose = 0x0010;       // WM_CLOSE
constexpr std::uint32_t kWmSysCommand = 0x0112;  // WM_SYSCOMMAND
/// SC_CLOSE, sign-extended to 32 bits; sent as it stands, deliberately.
constexpr std::uint32_t kCloseCommand = 0xFFFFF060;

/// What the passes over the windows have found so far.
struct Search {
    WindowHandle lastHandle = 0;
    bool found = false;
};

std::string ClassOf(WindowHandle window) {
    std::string buffer(kTextLength, '\0');
    const int length = GetClassNameA(window, buffer);
    return buffer.substr(0, static_cast<std::size_t>(length));
}

bool TitleNamesProgram(WindowHandle window) {
    std::string buffer(kTextLength, '\0');
    const int length = GetWindowTextA(window, buffer);
    return buffer.substr(0, static_cast<std::size_t>(length)).find(kTitlePart) != std::string::npos;
}

WindowHandle TopOwner(WindowHandle window) {
    WindowHandle owner = window;
    for (WindowHandle parent = GetParent(owner); parent != 0; parent = GetParent(owner)) {
        owner = parent;
    }
    return owner;
}

WindowHandle RememberedHandle() {
    const std::string text = GetSetting(SWIFTPATCH_SETTINGS_NAME, "Defaults", "Last Handle", "0");
    return IsNumeric(text) ? ToLong(text) : 0;
}

void ClassPass(Search& search) {
    for (std::size_t i = 1; i < WindowHandles.size(); ++i) {
        const WindowHandle window = WindowHandles[i];
        if (ClassOf(window) != kWindowClass) {
            continue;
        }
        const WindowHandle owner = TopOwner(window);
        if (!TitleNamesProgram(owner)) {
            continue;
        }
        if (!search.found) {
            search = {owner, true};
        }
        // Sent to every match, before the user is asked and to the window rather than its owner:
        // all three deliberately.
        SendMessageA(window, kWmSysCommand, kCloseCommand, 0);
    }
}

void RememberedHandlePass(Search& search) {
    if (search.lastHandle == 0 || search.found) {
        return;
    }
    search.found = TitleNamesProgram(search.lastHandle);
    if (!search.found) {
        search.lastHandle = 0;
    }
}

void TitlePass(Search& search) {
    if (search.lastHandle != 0) {
        return;
    }
    for (std::size_t i = 1; i < WindowHandles.size(); ++i) {
        if (TitleNamesProgram(WindowHandles[i])) {
            search = {WindowHandles[i], true};
            return;
        }
    }
}

bool UserWantsItClosed() {
    return MsgBox(
               "The program " SWIFTPATCH_RUNNING_NAME
               " is running and must be closed\r\n"
               "to perform an update.\r\n"
               "\r\n"
               "You can still download the latest version without installing it, however you will "
               "need to close " SWIFTPATCH_RUNNING_NAME
               " to install the update.\r\n"
               "\r\n"
               "Should I close the program " SWIFTPATCH_RUNNING_NAME " automatically?",
               msgbox::kYesNo + msgbox::kQuestion,
               // With a trailing blank, deliberately.
               SWIFTPATCH_RUNNING_NAME
               " Detected Running - Close Program Automatically ") == MsgBoxAnswer::kYes;
}

}  // namespace

bool EnumWindowsProc(WindowHandle hwnd, std::int32_t /*lParam*/) {
    WindowHandles.push_back(hwnd);
    return true;
}

bool GetWindowHandles(frmSwiftPatch& window) {
    WindowHandles.assign(1, 0);
    EnumWindows([](WindowHandle hwnd) { return EnumWindowsProc(hwnd, 0); });
    Search search{RememberedHandle(), false};
    ClassPass(search);
    RememberedHandlePass(search);
    TitlePass(search);
    if (!search.found) {
        return false;
    }
    window.MakeTopMost();
    if (UserWantsItClosed()) {
        const std::int32_t refused = SendMessageA(search.lastHandle, kWmClose, 0, 0);
        WaitSeconds(2);
        DoEvents();
        search.found = refused != 0;
    }
    return search.found;
}

}  // namespace swiftpatch
