#pragma once

#include <optional>
#include <string>
#include <vector>

#include "e2e/win32.h"

namespace swiftpatch::e2e {

// What can be seen of any program's windows from outside. A window that goes meanwhile reads as
// empty, hidden and disabled.

std::wstring ClassOf(HWND window);
/// The text of any window, also one of another program; asks the window itself. Empty when it does
/// not answer, as a window that is about to go.
std::optional<std::string> AskText(HWND window);
/// The same, with no text for a window that does not answer.
std::string TextOf(HWND window);

/// The program's visible top-level windows, from the top down.
std::vector<HWND> VisibleWindowsOf(DWORD process);
/// The same with the hidden ones.
std::vector<HWND> TopLevelWindowsOf(DWORD process);
/// All windows inside a window, at any depth.
std::vector<HWND> WindowsInside(HWND window);

/// Presses a button as a mouse does: button down and up in its middle. The window must take input.
void ClickOn(HWND button);

/// A message box of the system, as it stands on the screen.
struct Box {
    HWND window = nullptr;
    std::string title;
    std::string text;
    std::vector<int> buttons;  ///< The control ids of the visible buttons, in ascending order.
};

/// The class of the system's message boxes.
inline constexpr wchar_t kMessageBoxClass[] = L"#32770";

bool IsMessageBox(HWND window);
Box ReadMessageBox(HWND window);

}  // namespace swiftpatch::e2e
