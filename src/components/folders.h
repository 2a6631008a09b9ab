#pragma once

#include <string>

namespace swiftpatch {

/// Makes a folder together with all folders around it; one that is there already counts as made.
/// False when it could not be made. Levels are separated by "\"; a drive or a network share at the
/// front is no level.
bool MakeFolders(const std::string& path);

}  // namespace swiftpatch
