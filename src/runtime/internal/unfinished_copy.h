#pragma once

#include <string>

#include "runtime/code_page.h"

namespace swiftpatch {

/// The one name for all copies in a folder that are not finished: what a killed program has left
/// can be found by it. Nobody else gives a file this name by chance.
inline constexpr const char* kUnfinishedCopy = "~unfinished-copy-5d2e81b7.tmp";

/// For so many milliseconds what another process does to a file for a moment is waited for: a virus
/// scanner or an indexer looks at every new file.
inline constexpr int kLongestHold = 2000;

/// The unfinished copy that becomes the file `path`.
inline std::string UnfinishedCopyOf(const std::string& path) {
    return path.substr(0, MaskTrailBytes(path).find_last_of("\\/:") + 1) + kUnfinishedCopy;
}

}  // namespace swiftpatch
