#pragma once

#include <filesystem>
#include <string>

namespace publish {

// Where a command to upload with gets the path of the file, and its name alone.
inline constexpr const char* kFilePlace = "{file}";
inline constexpr const char* kNamePlace = "{name}";

/// The command for one file.
std::string UploadCommand(const std::string& pattern, const std::filesystem::path& file);

/// Runs it. Throws PublishError when it does not end with 0.
void Upload(const std::string& pattern, const std::filesystem::path& file);

}  // namespace publish
