#include <algorithm>
#include <vector>

#include "runtime/win32/canvas.h"
#include "runtime/win32/text_view_state.h"

namespace swiftpatch {
namespace {

constexpr int kColumnsAStep = 8;  // Of the horizontal scroll bar.

}  // namespace

TextView::TextView(HWND window, const char* text) : window_(window) {
    lines_.Set(text == nullptr ? "" : text);
    UseFont(nullptr);
}

void TextView::UseFont(HFONT font) {
    font_ = font;
    const HDC device = ::GetDC(window_);
    const HGDIOBJ before = ::SelectObject(device, Font());
    TEXTMETRICA metrics{};
    ::GetTextMetricsA(device, &metrics);
    ::SelectObject(device, before);
    ::ReleaseDC(window_, device);
    cell_ = {std::max(metrics.tmAveCharWidth, 1L), std::max(metrics.tmHeight, 1L)};
    ScrollTo(top_, left_);
}

HGDIOBJ TextView::Font() const {
    return font_ != nullptr ? font_ : ::GetStockObject(SYSTEM_FIXED_FONT);
}

void TextView::Paint() const {
    const Canvas canvas(window_);
    const HDC device = canvas.Device();
    ::FillRect(device, &canvas.Client(), ::GetSysColorBrush(COLOR_WINDOW));
    const HGDIOBJ before = ::SelectObject(device, Font());
    const auto count = static_cast<int>(lines_.Count());
    // The last row may be seen in part only.
    for (int row = 0; row <= Rows() && top_ + row < count; ++row) {
        PaintLine(device, static_cast<std::size_t>(top_ + row), row * cell_.cy);
    }
    ::SelectObject(device, before);
}

void TextView::PaintLine(HDC device, std::size_t line, int top) const {
    const auto left = static_cast<std::size_t>(left_);
    const auto columns = static_cast<std::size_t>(Columns()) + 1;
    PaintCells(device, line, left, columns, top, false);
    const std::size_t start = std::max(selection_.First(), lines_.OffsetAt(line, 0));
    const std::size_t end = std::min(selection_.Behind(), lines_.EndOf(line));
    if (start >= end || ::GetFocus() != window_) {
        return;
    }
    const std::size_t first = std::max(lines_.ColumnOf(start), left);
    const std::size_t behind = std::min(lines_.ColumnOf(end), left + columns);
    if (first < behind) {
        PaintCells(device, line, first, behind - first, top, true);
    }
}

/// Every character gets a cell of its own, whatever the font thinks of its width.
void TextView::PaintCells(HDC device, std::size_t line, std::size_t first, std::size_t count,
                          int top, bool selected) const {
    const std::string cells = lines_.Cells(line, first, count);
    const std::vector<INT> widths(cells.size(), cell_.cx);
    const int x = Margin() + (static_cast<int>(first) - left_) * cell_.cx;
    const RECT around{x, top, x + static_cast<int>(count) * cell_.cx, top + cell_.cy};
    ::SetTextColor(device, ::GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    ::SetBkColor(device, ::GetSysColor(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    ::ExtTextOutA(device, x, top, ETO_OPAQUE | ETO_CLIPPED, &around, cells.data(),
                  static_cast<UINT>(cells.size()), widths.data());
}

void TextView::Scroll(int bar, WPARAM request) {
    SCROLLINFO info{sizeof(info), SIF_ALL, 0, 0, 0, 0, 0};
    ::GetScrollInfo(window_, bar, &info);
    const int step = bar == SB_VERT ? 1 : kColumnsAStep;
    const auto page = std::max(static_cast<int>(info.nPage), 1);
    int position = info.nPos;
    switch (LOWORD(request)) {
        case SB_LINEUP:
            position -= step;
            break;
        case SB_LINEDOWN:
            position += step;
            break;
        case SB_PAGEUP:
            position -= page;
            break;
        case SB_PAGEDOWN:
            position += page;
            break;
        case SB_TOP:
            position = 0;
            break;
        case SB_BOTTOM:
            position = info.nMax;
            break;
        case SB_THUMBPOSITION:
        case SB_THUMBTRACK:
            position = info.nTrackPos;
            break;
        default:
            return;
    }
    bar == SB_VERT ? ScrollTo(position, left_) : ScrollTo(top_, position);
}

void TextView::ScrollTo(int line, int column) {
    // One column more than the widest line has, for the caret behind it.
    const auto lines = static_cast<int>(lines_.Count());
    const int columns = static_cast<int>(lines_.Width()) + 1;
    top_ = std::clamp(line, 0, std::max(lines - Rows(), 0));
    left_ = std::clamp(column, 0, std::max(columns - Columns(), 0));
    ShowBar(SB_VERT, lines, Rows(), top_);
    ShowBar(SB_HORZ, columns, Columns(), left_);
    Redraw();
}

void TextView::ShowBar(int bar, int count, int page, int position) {
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    info.nMax = count - 1;
    info.nPage = static_cast<UINT>(page);
    info.nPos = position;
    ::SetScrollInfo(window_, bar, &info, TRUE);
}

/// Scrolls as far as needed to see the caret.
void TextView::ShowCaret() {
    const auto line = static_cast<int>(lines_.LineOf(selection_.Caret()));
    const auto column = static_cast<int>(lines_.ColumnOf(selection_.Caret()));
    ScrollTo(std::clamp(top_, line - Rows() + 1, line),
             std::clamp(left_, column - Columns() + 1, column));
}

void TextView::Redraw() {
    ::InvalidateRect(window_, nullptr, FALSE);
    PlaceCaret();
}

void TextView::PlaceCaret() const {
    if (::GetFocus() == window_) {
        const auto line = static_cast<int>(lines_.LineOf(selection_.Caret()));
        const auto column = static_cast<int>(lines_.ColumnOf(selection_.Caret()));
        ::SetCaretPos(Margin() + (column - left_) * cell_.cx, (line - top_) * cell_.cy);
    }
}

int TextView::Rows() const {
    RECT client;
    ::GetClientRect(window_, &client);
    return std::max(client.bottom / cell_.cy, 1L);
}

int TextView::Columns() const {
    RECT client;
    ::GetClientRect(window_, &client);
    return std::max((client.right - Margin()) / cell_.cx, 1L);
}

std::size_t TextView::OffsetAtPoint(LPARAM place) const {
    // With the button held down the mouse may be above or left of the window.
    const int y = static_cast<SHORT>(HIWORD(place));
    const int x = static_cast<SHORT>(LOWORD(place)) - Margin() + cell_.cx / 2;
    const int row = y < 0 ? -1 : y / cell_.cy;
    const int line = std::clamp(top_ + row, 0, static_cast<int>(lines_.Count()) - 1);
    const int column = x < 0 ? left_ - 1 : left_ + x / cell_.cx;
    return lines_.OffsetAt(static_cast<std::size_t>(line),
                           static_cast<std::size_t>(std::max(column, 0)));
}

}  // namespace swiftpatch
