#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace swiftpatch {

/// A text of any size, taken apart into lines that end in CR LF, for showing it in a font whose
/// characters are all equally wide. A column is the place of one character; a tab goes on to the
/// next multiple of 8.
class TextLines {
public:
    TextLines() { Set({}); }

    void Set(std::string text);
    const std::string& Text() const { return text_; }

    /// At least 1: what follows the last CR LF is a line too, even when it is empty.
    std::size_t Count() const { return starts_.size(); }
    /// Without its CR LF.
    std::string_view Line(std::size_t line) const;
    /// The columns of the widest line.
    std::size_t Width() const { return width_; }

    std::size_t LineOf(std::size_t offset) const;
    /// The offset of a line's end: of its CR LF, or of the text's end.
    std::size_t EndOf(std::size_t line) const;
    std::size_t ColumnOf(std::size_t offset) const;
    /// The character whose place the column is; a line's end for columns behind it.
    std::size_t OffsetAt(std::size_t line, std::size_t column) const;

    /// What columns `first` to `first` + `count` of a line show, no blanks at the end: tabs are
    /// blanks, and so are control characters, which no font has pictures of.
    std::string Cells(std::size_t line, std::size_t first, std::size_t count) const;

private:
    std::string text_;
    std::vector<std::size_t> starts_;
    std::size_t width_ = 0;
};

}  // namespace swiftpatch
