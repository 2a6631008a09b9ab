#include "runtime/internal/text_tail.h"

namespace swiftpatch {

std::string_view TextTail(std::string_view text, std::size_t most) {
    if (text.size() <= most) {
        return text;
    }
    constexpr std::string_view kLineEnd = "\r\n";
    const std::size_t first = text.size() - most;
    const std::size_t search = first - (first < kLineEnd.size() ? first : kLineEnd.size());
    const std::size_t end = text.find(kLineEnd, search);
    const std::size_t line = end + kLineEnd.size();
    return text.substr(end == std::string_view::npos || line == text.size() ? first : line);
}

}  // namespace swiftpatch
