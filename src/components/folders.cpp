#include "components/folders.h"

#include <algorithm>

#include "runtime/code_page.h"
#include "runtime/files.h"
#include "runtime/runtime_error.h"

namespace swiftpatch {
namespace {

/// 0, or the number of the error that making the folder raised.
std::int32_t ErrorOfMkDir(const std::string& path) {
    try {
        MkDir(path);
        return 0;
    } catch (const RuntimeError& error) {
        return error.Number();
    }
}

/// Error 75 says that the folder exists, or that it may not be created, as at the root of a drive.
/// Where it really is missing, opening the file in it fails.
bool IsThere(std::int32_t error) { return error == 0 || error == error_number::kPathFileAccess; }

/// Levels that no folder is made for: "C:", and server and share of "\\server\share\...".
bool IsDrivePart(const std::string& path, std::size_t index, const std::string& level) {
    constexpr std::size_t kShare = 3;
    return level.empty() || level.ends_with(':') || (path.starts_with("\\\\") && index <= kShare);
}

bool MakeEachLevel(const std::string& path) {
    const std::string masked = MaskTrailBytes(path);
    std::size_t start = 0;
    for (std::size_t index = 0; start <= path.size(); ++index) {
        const std::size_t end = std::min(masked.find('\\', start), path.size());
        const std::string level = path.substr(start, end - start);
        if (!IsDrivePart(path, index, level) && !IsThere(ErrorOfMkDir(path.substr(0, end)))) {
            return false;
        }
        start = end + 1;
    }
    return true;
}

}  // namespace

bool MakeFolders(const std::string& path) {
    const std::int32_t error = ErrorOfMkDir(path);
    return error == error_number::kPathNotFound ? MakeEachLevel(path) : IsThere(error);
}

}  // namespace swiftpatch
