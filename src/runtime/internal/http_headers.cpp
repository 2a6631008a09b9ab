#include "runtime/internal/http_headers.h"

#include "runtime/strings.h"

namespace swiftpatch {

std::string HeaderValue(std::string_view headers, std::string_view name) {
    while (!headers.empty()) {
        const std::size_t end = headers.find('\n');
        const std::string_view line = headers.substr(0, end);
        headers.remove_prefix(end == std::string_view::npos ? headers.size() : end + 1);
        const std::size_t colon = line.find(':');
        if (colon != std::string_view::npos && EqualWithoutCase(line.substr(0, colon), name)) {
            return std::string(TrimBlanks(line.substr(colon + 1)));
        }
    }
    return {};
}

}  // namespace swiftpatch
