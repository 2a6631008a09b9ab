#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace publish {

// What the standard library does not offer, once for each system.

/// Keeps every other publish out of a folder as long as it lives, and no longer than its process.
/// On a file system that knows no such lock it keeps nobody out.
class FolderLock {
public:
    /// Throws PublishError when another one is at work there.
    explicit FolderLock(const std::filesystem::path& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    std::intptr_t handle_;
};

/// Puts what was written to a file onto the disk. Throws PublishError.
void FlushFile(const std::filesystem::path& file);

/// Puts the names in a folder onto the disk, where the system offers that.
void FlushFolder(const std::filesystem::path& folder);

/// From now on who reads no more of what is written does not end the process.
void OutliveReaders();

/// An argument as the system's shell takes it for one word.
std::string Quoted(const std::string& argument);

/// Runs a command of the system's shell, whose output goes to the standard error stream; returns
/// its exit status.
int RunInShell(const std::string& command);

}  // namespace publish
