#pragma once

#include <filesystem>
#include <string>

namespace publish {

// Whole files, on the disk when a function returns. Each throws PublishError or
// std::filesystem::filesystem_error, and may leave an unfinished file behind.

std::string ReadFile(const std::filesystem::path& file);
void WriteFile(const std::filesystem::path& file, const std::string& bytes);

/// A copy with the time of the original.
void CopyFile(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace publish
