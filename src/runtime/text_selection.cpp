#include "runtime/text_selection.h"

#include <algorithm>

namespace swiftpatch {

std::size_t TextSelection::First() const { return std::min(anchor_, caret_); }

std::size_t TextSelection::Behind() const { return std::max(anchor_, caret_); }

std::string TextSelection::Text() const {
    return lines_.Text().substr(First(), Behind() - First());
}

void TextSelection::Select(std::size_t anchor, std::size_t caret) {
    anchor_ = std::min(anchor, lines_.Text().size());
    caret_ = std::min(caret, lines_.Text().size());
    column_ = lines_.ColumnOf(caret_);
}

void TextSelection::MoveTo(std::size_t offset, bool extend) {
    Select(extend ? anchor_ : offset, offset);
}

void TextSelection::Move(CaretStep step, std::size_t page, bool extend) {
    const std::size_t column = column_;
    MoveTo(After(step, page), extend);
    const bool vertical = step == CaretStep::kUp || step == CaretStep::kDown ||
                          step == CaretStep::kPageUp || step == CaretStep::kPageDown;
    if (vertical) {
        column_ = column;
    }
}

std::size_t TextSelection::Left() const {
    const std::size_t line = lines_.LineOf(caret_);
    if (caret_ > lines_.OffsetAt(line, 0)) {
        return caret_ - 1;
    }
    return line == 0 ? caret_ : lines_.EndOf(line - 1);
}

std::size_t TextSelection::Right() const {
    const std::size_t line = lines_.LineOf(caret_);
    if (caret_ < lines_.EndOf(line)) {
        return caret_ + 1;
    }
    return line + 1 < lines_.Count() ? lines_.OffsetAt(line + 1, 0) : caret_;
}

std::size_t TextSelection::LinesUp(std::size_t count) const {
    const std::size_t line = lines_.LineOf(caret_);
    return lines_.OffsetAt(line - std::min(line, count), column_);
}

std::size_t TextSelection::LinesDown(std::size_t count) const {
    const std::size_t line = lines_.LineOf(caret_);
    return lines_.OffsetAt(std::min(line + count, lines_.Count() - 1), column_);
}

std::size_t TextSelection::After(CaretStep step, std::size_t page) const {
    const std::size_t line = lines_.LineOf(caret_);
    switch (step) {
        case CaretStep::kLeft:
            return Left();
        case CaretStep::kRight:
            return Right();
        case CaretStep::kUp:
            return LinesUp(1);
        case CaretStep::kDown:
            return LinesDown(1);
        case CaretStep::kPageUp:
            return LinesUp(page);
        case CaretStep::kPageDown:
            return LinesDown(page);
        case CaretStep::kLineStart:
            return lines_.OffsetAt(line, 0);
        case CaretStep::kLineEnd:
            return lines_.EndOf(line);
        case CaretStep::kTextStart:
            return 0;
        case CaretStep::kTextEnd:
        default:
            return lines_.Text().size();
    }
}

}  // namespace swiftpatch
