#include "components/join_path.h"

#include "runtime/code_page.h"

namespace swiftpatch {

std::string JoinPath(std::string_view first, std::string_view second) {
    first = first.substr(0, MaskTrailBytes(first).find_last_not_of('\\') + 1);
    while (second.starts_with('\\')) {
        second.remove_prefix(1);
    }
    return std::string(first) + "\\" + std::string(second);
}

}  // namespace swiftpatch
