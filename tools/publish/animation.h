#pragma once

#include <string>

namespace publish {

/// The busy animation that belongs to the updater, as the bytes of its file.
std::string AnimationFile();

}  // namespace publish
