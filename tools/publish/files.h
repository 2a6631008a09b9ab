#pragma once

#include <filesystem>
#include <string>

namespace publish {

// Whole files, on the disk when a function returns. Each throws PublishError or
// std::filesystem::filesystem_error, and may leave an unfinished file behind.

std::string ReadFile(const std::filesystem::path& file);
void WriteFile(const std::filesystem::path& file, const std::string& bytes);

/// Puts a file of this content in the place of one, or leaves that as it is. `scratch` is the name
/// of a file on the same file system that can be written.
void ReplaceFile(const std::filesystem::path& file, const std::string& bytes,
                 const std::filesystem::path& scratch);

/// A copy with the time of the original.
void CopyFile(const std::filesystem::path& from, const std::filesystem::path& to);

/// Removes a folder with all that can be removed of it. Follows no link.
void RemoveFolder(const std::filesystem::path& folder);

}  // namespace publish
