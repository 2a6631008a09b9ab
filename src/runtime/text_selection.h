#pragma once

#include <cstddef>
#include <string>

#include "runtime/text_lines.h"

namespace swiftpatch {

/// How a key moves the caret.
enum class CaretStep {
    kLeft,
    kRight,
    kUp,
    kDown,
    kPageUp,
    kPageDown,
    kLineStart,
    kLineEnd,
    kTextStart,
    kTextEnd,
};

/// The caret in a shown text, and what is selected: the characters between it and the place where
/// the selection began. Offsets count bytes from the text's first.
class TextSelection {
public:
    explicit TextSelection(const TextLines& lines) : lines_(lines) {}

    std::size_t Caret() const { return caret_; }
    std::size_t First() const;
    std::size_t Behind() const;
    std::string Text() const;

    /// Selects from `anchor` to `caret`; offsets behind the text's end count as its end.
    void Select(std::size_t anchor, std::size_t caret);
    /// `extend` keeps the selection's other end.
    void MoveTo(std::size_t offset, bool extend);
    /// `page` is how many lines a page has.
    void Move(CaretStep step, std::size_t page, bool extend);

private:
    std::size_t Left() const;
    std::size_t Right() const;
    std::size_t LinesUp(std::size_t count) const;
    std::size_t LinesDown(std::size_t count) const;
    std::size_t After(CaretStep step, std::size_t page) const;

    const TextLines& lines_;
    std::size_t anchor_ = 0;
    std::size_t caret_ = 0;
    std::size_t column_ = 0;  ///< To which moves up and down come back after shorter lines.
};

}  // namespace swiftpatch
