#include "e2e/window_view.h"

#include <algorithm>
#include <array>

#include "e2e/text.h"

namespace swiftpatch::e2e {
namespace {

// A program that does not answer within this time is taken to show nothing.
constexpr UINT kLongestAnswerMilliseconds = 2000;

struct Search {
    DWORD process;
    std::vector<HWND> found;
};

Search& SearchOf(LPARAM parameter) {
    return *reinterpret_cast<Search*>(parameter);  // The way of the platform's enumerations.
}

BOOL CALLBACK CollectOfProcess(HWND window, LPARAM parameter) {
    Search& search = SearchOf(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == search.process) {
        search.found.push_back(window);
    }
    return TRUE;
}

BOOL CALLBACK CollectAll(HWND window, LPARAM parameter) {
    SearchOf(parameter).found.push_back(window);
    return TRUE;
}

bool Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam, std::size_t& answer) {
    DWORD_PTR result = 0;
    const bool answered = SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG,
                                              kLongestAnswerMilliseconds, &result) != 0;
    answer = result;
    return answered;
}

bool IsButton(HWND window) {
    const std::wstring kind = ClassOf(window);
    return _wcsicmp(kind.c_str(), L"Button") == 0 && IsWindowVisible(window) != 0;
}

}  // namespace

std::wstring ClassOf(HWND window) {
    std::array<wchar_t, 128> name{};
    const int length = GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return {name.data(), static_cast<std::size_t>(std::max(length, 0))};
}

std::optional<std::string> AskText(HWND window) {
    // Nearly every text is shorter, so that one question is enough.
    std::wstring text(1024, L'\0');
    std::size_t length = 0;
    while (Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()), length)) {
        if (length + 1 < text.size()) {
            text.resize(length);
            return Utf8(text);
        }
        text.resize(text.size() * 4);
    }
    return std::nullopt;
}

std::string TextOf(HWND window) { return AskText(window).value_or(""); }

std::vector<HWND> VisibleWindowsOf(DWORD process) {
    std::vector<HWND> windows = TopLevelWindowsOf(process);
    std::erase_if(windows, [](HWND window) { return IsWindowVisible(window) == 0; });
    return windows;
}

std::vector<HWND> TopLevelWindowsOf(DWORD process) {
    Search search{process, {}};
    EnumWindows(CollectOfProcess, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::vector<HWND> WindowsInside(HWND window) {
    Search search{0, {}};
    EnumChildWindows(window, CollectAll, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void ClickOn(HWND button) {
    RECT area = {};
    GetClientRect(button, &area);
    const LPARAM middle = MAKELPARAM(area.right / 2, area.bottom / 2);
    PostMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, middle);
    PostMessageW(button, WM_LBUTTONUP, 0, middle);
}

bool IsMessageBox(HWND window) { return ClassOf(window) == kMessageBoxClass; }

Box ReadMessageBox(HWND window) {
    Box box;
    box.window = window;
    box.title = TextOf(window);
    for (const HWND part : WindowsInside(window)) {
        if (IsButton(part)) {
            box.buttons.push_back(GetDlgCtrlID(part));
        } else if (_wcsicmp(ClassOf(part).c_str(), L"Static") == 0) {
            // The other static part is the icon, whose text is empty or its name.
            const std::string text = TextOf(part);
            box.text = text.size() > box.text.size() ? text : box.text;
        }
    }
    std::sort(box.buttons.begin(), box.buttons.end());
    return box;
}

}  // namespace swiftpatch::e2e
