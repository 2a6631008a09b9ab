#pragma once

#include <cstddef>

#include "runtime/text_lines.h"
#include "runtime/text_selection.h"
#include "runtime/win32/win32.h"

namespace swiftpatch {

/// One window of the class TextViewClass().
class TextView {
public:
    TextView(HWND window, const char* text);

    LRESULT Answer(UINT message, WPARAM wParam, LPARAM lParam);

private:
    LRESULT AnswerAsText(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT AnswerAsEdit(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT CopyText(char* target, std::size_t size) const;
    void OnKey(WPARAM key);
    void OnCharacter(WPARAM character);
    void OnMouse(UINT message, WPARAM keys, LPARAM place);

    void Copy() const;

    void UseFont(HFONT font);
    HGDIOBJ Font() const;
    void Paint() const;
    void PaintLine(HDC device, std::size_t line, int top) const;
    void PaintCells(HDC device, std::size_t line, std::size_t first, std::size_t count, int top,
                    bool selected) const;

    void Scroll(int bar, WPARAM request);
    void ScrollTo(int line, int column);
    void ShowBar(int bar, int count, int page, int position);
    void ShowCaret();
    void PlaceCaret() const;
    void Redraw();

    /// Left of the text; as wide for its letters as in the system's own boxes.
    int Margin() const { return cell_.cx / 2; }
    int Rows() const;
    int Columns() const;
    std::size_t OffsetAtPoint(LPARAM place) const;

    HWND window_;
    HFONT font_ = nullptr;
    SIZE cell_{1, 1};
    TextLines lines_;
    TextSelection selection_{lines_};
    int top_ = 0;   ///< The first line to be seen.
    int left_ = 0;  ///< The first column to be seen.
    int wheel_ = 0;
};

}  // namespace swiftpatch
