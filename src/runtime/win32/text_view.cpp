#include "runtime/win32/text_view.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "runtime/win32/pump.h"
#include "runtime/win32/text_view_state.h"
#include "runtime/win32/themed_edge.h"

namespace swiftpatch {
namespace {

constexpr int kWheelLines = 3;  // For a notch of the wheel.
constexpr WPARAM kCtrlA = 0x01;
constexpr WPARAM kCtrlC = 0x03;

// What a window of any class answers to OBJID_QUERYCLASSNAMEIDX when screen readers are to take it
// for an edit box.
constexpr LRESULT kReadAsEdit = 65536 + 4;

bool IsDown(int key) { return ::GetKeyState(key) < 0; }

std::optional<CaretStep> StepOfKey(WPARAM key) {
    const bool whole = IsDown(VK_CONTROL);
    switch (key) {
        case VK_LEFT:
            return CaretStep::kLeft;
        case VK_RIGHT:
            return CaretStep::kRight;
        case VK_UP:
            return CaretStep::kUp;
        case VK_DOWN:
            return CaretStep::kDown;
        case VK_PRIOR:
            return CaretStep::kPageUp;
        case VK_NEXT:
            return CaretStep::kPageDown;
        case VK_HOME:
            return whole ? CaretStep::kTextStart : CaretStep::kLineStart;
        case VK_END:
            return whole ? CaretStep::kTextEnd : CaretStep::kLineEnd;
        default:
            return {};
    }
}

}  // namespace

LRESULT TextView::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            Paint();
            return 0;
        case WM_ERASEBKGND:
            return 1;  // All is painted in WM_PAINT, in one go.
        case WM_NCPAINT:
            ::DefWindowProcA(window_, message, wParam, lParam);
            PaintThemedEdge(window_);
            return 0;
        case WM_SIZE:
            ScrollTo(top_, left_);
            return 0;
        case WM_VSCROLL:
            Scroll(SB_VERT, wParam);
            return 0;
        case WM_HSCROLL:
            Scroll(SB_HORZ, wParam);
            return 0;
        case WM_MOUSEWHEEL:
            wheel_ += GET_WHEEL_DELTA_WPARAM(wParam);
            ScrollTo(top_ - wheel_ / WHEEL_DELTA * kWheelLines, left_);
            wheel_ %= WHEEL_DELTA;
            return 0;
        case WM_LBUTTONDOWN:
        case WM_MOUSEMOVE:
        case WM_LBUTTONUP:
            OnMouse(message, wParam, lParam);
            return 0;
        case WM_SETFOCUS:
            ::CreateCaret(window_, nullptr, ::GetSystemMetrics(SM_CXBORDER), cell_.cy);
            ::ShowCaret(window_);
            Redraw();
            return 0;
        case WM_KILLFOCUS:
            ::DestroyCaret();
            Redraw();
            return 0;
        case WM_SYSCOLORCHANGE:
            Redraw();
            return 0;
        default:
            return AnswerAsText(message, wParam, lParam);
    }
}

LRESULT TextView::AnswerAsText(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SETTEXT:
            lines_.Set(reinterpret_cast<const char*>(lParam));
            selection_.Select(0, 0);
            ScrollTo(0, 0);
            return TRUE;
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(lines_.Text().size());
        case WM_GETTEXT:
            return CopyText(reinterpret_cast<char*>(lParam), wParam);
        case WM_SETFONT:
            UseFont(reinterpret_cast<HFONT>(wParam));
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(font_);
        default:
            return AnswerAsEdit(message, wParam, lParam);
    }
}

LRESULT TextView::AnswerAsEdit(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_KEYDOWN:
            OnKey(wParam);
            return 0;
        case WM_CHAR:
            OnCharacter(wParam);
            return 0;
        case WM_COPY:
            Copy();
            return 0;
        case EM_SETSEL:
            // -1 is the text's end.
            selection_.Select(wParam, static_cast<std::size_t>(lParam));
            ShowCaret();
            return 0;
        case EM_GETSEL:
            return MAKELRESULT(std::min<std::size_t>(selection_.First(), 0xFFFF),
                               std::min<std::size_t>(selection_.Behind(), 0xFFFF));
        case EM_GETLINECOUNT:
            return static_cast<LRESULT>(lines_.Count());
        case WM_GETOBJECT:
            if (lParam == OBJID_QUERYCLASSNAMEIDX) {
                return kReadAsEdit;
            }
            [[fallthrough]];
        default:
            return ::DefWindowProcA(window_, message, wParam, lParam);
    }
}

LRESULT TextView::CopyText(char* target, std::size_t size) const {
    if (size == 0) {
        return 0;
    }
    const std::size_t count = std::min(size - 1, lines_.Text().size());
    std::memcpy(target, lines_.Text().data(), count);
    target[count] = '\0';
    return static_cast<LRESULT>(count);
}

void TextView::OnKey(WPARAM key) {
    if (key == VK_INSERT && IsDown(VK_CONTROL)) {
        Copy();
    } else if (const std::optional<CaretStep> step = StepOfKey(key)) {
        selection_.Move(*step, static_cast<std::size_t>(Rows()), IsDown(VK_SHIFT));
        ShowCaret();
    }
}

void TextView::OnCharacter(WPARAM character) {
    if (character == kCtrlA) {
        selection_.Select(0, lines_.Text().size());
        Redraw();
    } else if (character == kCtrlC) {
        Copy();
    }
}

void TextView::OnMouse(UINT message, WPARAM keys, LPARAM place) {
    if (message == WM_LBUTTONUP) {
        ::ReleaseCapture();
    } else if (message == WM_LBUTTONDOWN) {
        ::SetFocus(window_);
        ::SetCapture(window_);
        selection_.MoveTo(OffsetAtPoint(place), (keys & MK_SHIFT) != 0);
        ShowCaret();
    } else if (::GetCapture() == window_) {
        selection_.MoveTo(OffsetAtPoint(place), true);
        ShowCaret();
    }
}

void TextView::Copy() const {
    const std::string text = selection_.Text();
    if (text.empty() || !::OpenClipboard(window_)) {
        return;
    }
    ::EmptyClipboard();
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    if (memory != nullptr) {
        std::memcpy(::GlobalLock(memory), text.c_str(), text.size() + 1);
        ::GlobalUnlock(memory);
        ::SetClipboardData(CF_TEXT, memory);
    }
    ::CloseClipboard();
}

namespace {

LRESULT CALLBACK TextViewProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return Guarded([=]() -> LRESULT {
        if (message == WM_NCCREATE) {
            const auto* const made = reinterpret_cast<const CREATESTRUCTA*>(lParam);
            auto* const view = new TextView(window, made->lpszName);
            ::SetWindowLongA(window, 0, reinterpret_cast<LONG>(view));
            return ::DefWindowProcA(window, message, wParam, lParam);
        }
        auto* const view = reinterpret_cast<TextView*>(::GetWindowLongA(window, 0));
        if (view == nullptr) {
            return ::DefWindowProcA(window, message, wParam, lParam);
        }
        if (message == WM_NCDESTROY) {
            delete view;
            ::SetWindowLongA(window, 0, 0);
            return 0;
        }
        return view->Answer(message, wParam, lParam);
    });
}

}  // namespace

const char* TextViewClass() {
    static const char* const name = [] {
        constexpr const char* kClass = "SwiftPatchText";
        WNDCLASSA view{};
        view.lpfnWndProc = TextViewProcedure;
        view.cbWndExtra = sizeof(LONG);
        view.hInstance = ::GetModuleHandleA(nullptr);
        view.hCursor = ::LoadCursorA(nullptr, IDC_IBEAM);
        view.lpszClassName = kClass;
        ::RegisterClassA(&view);
        return kClass;
    }();
    return name;
}

}  // namespace swiftpatch
