#include "components/join_path.h"

namespace swiftpatch {

std::string JoinPath(std::string_view first, std::string_view second) {
    while (first.ends_with('\\')) {
        first.remove_suffix(1);
    }
    while (second.starts_with('\\')) {
        second.remove_prefix(1);
    }
    return std::string(first) + "\\" + std::string(second);
}

}  // namespace swiftpatch
