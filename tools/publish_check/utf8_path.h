#pragma once

#include <filesystem>
#include <string>

namespace publish_check {

/// The file of this name, which is UTF-8 on Windows, and as it is elsewhere.
inline std::filesystem::path PathOf(const std::string& name) {
    return {std::u8string(name.begin(), name.end())};
}

/// The same the other way round.
inline std::string Utf8(const std::filesystem::path& path) {
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
}

}  // namespace publish_check
