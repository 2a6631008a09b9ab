#include "runtime/text_lines.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace swiftpatch {
namespace {

constexpr std::size_t kTab = 8;
constexpr std::string_view kLineEnd = "\r\n";

/// The column behind a character that stands at `column`.
std::size_t Behind(std::size_t column, char character) {
    return character == '\t' ? (column / kTab + 1) * kTab : column + 1;
}

std::size_t WidthOf(std::string_view characters) {
    return std::accumulate(characters.begin(), characters.end(), std::size_t{0}, Behind);
}

bool HasPicture(char character) { return static_cast<unsigned char>(character) >= ' '; }

}  // namespace

void TextLines::Set(std::string text) {
    text_ = std::move(text);
    starts_.assign(1, 0);
    for (std::size_t end = text_.find(kLineEnd); end != std::string::npos;
         end = text_.find(kLineEnd, starts_.back())) {
        starts_.push_back(end + kLineEnd.size());
    }
    width_ = 0;
    for (std::size_t line = 0; line < Count(); ++line) {
        width_ = std::max(width_, WidthOf(Line(line)));
    }
}

std::string_view TextLines::Line(std::size_t line) const {
    const std::size_t start = starts_[line];
    return std::string_view(text_).substr(start, EndOf(line) - start);
}

std::size_t TextLines::EndOf(std::size_t line) const {
    return line + 1 < Count() ? starts_[line + 1] - kLineEnd.size() : text_.size();
}

std::size_t TextLines::LineOf(std::size_t offset) const {
    const auto after = std::upper_bound(starts_.begin(), starts_.end(), offset);
    return static_cast<std::size_t>(after - starts_.begin()) - 1;
}

std::size_t TextLines::ColumnOf(std::size_t offset) const {
    const std::size_t line = LineOf(offset);
    return WidthOf(Line(line).substr(0, offset - starts_[line]));
}

std::size_t TextLines::OffsetAt(std::size_t line, std::size_t column) const {
    const std::string_view characters = Line(line);
    std::size_t offset = 0;
    std::size_t behind = 0;
    while (offset < characters.size()) {
        behind = Behind(behind, characters[offset]);
        if (behind > column) {
            break;
        }
        ++offset;
    }
    return starts_[line] + offset;
}

std::string TextLines::Cells(std::size_t line, std::size_t first, std::size_t count) const {
    std::string cells;
    std::size_t column = 0;
    for (const char character : Line(line)) {
        const std::size_t behind = Behind(column, character);
        if (column >= first + count) {
            break;
        }
        if (behind > first && HasPicture(character)) {
            cells.resize(column - first, ' ');
            cells += character;
        }
        column = behind;
    }
    return cells;
}

}  // namespace swiftpatch
