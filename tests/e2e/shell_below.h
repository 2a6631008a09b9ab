#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace swiftpatch::e2e {

/// A path as the system below Wine knows it, which is that of drive Z.
std::string PathBelow(const std::filesystem::path& path);

/// Starts a shell script of the system below Wine and does not wait for it; the arguments are $0,
/// $1 and so on. The script must not contain double quotes that are not escaped. Where there is no
/// such system, nothing happens.
void RunBelow(const std::string& script, const std::vector<std::string>& arguments);

}  // namespace swiftpatch::e2e
