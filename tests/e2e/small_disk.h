#pragma once

#include <cstdint>
#include <filesystem>

namespace swiftpatch::e2e {

/// A file system of its own, a few megabytes in memory, mounted on a folder as long as this lives
/// and by itself no longer than five minutes. Only root may mount, and not in every container:
/// where it is refused, `Mounted` is false and the folder is an ordinary one.
class SmallDisk {
public:
    explicit SmallDisk(const std::filesystem::path& folder);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool Mounted() const { return mounted_; }
    /// Fills it up until so many bytes are free, or makes room again.
    void Leave(std::int64_t free) const;
    void MakeRoom() const;

private:
    std::filesystem::path Filler() const { return folder_ / "filler"; }

    std::filesystem::path folder_;
    std::filesystem::path marker_;
    bool mounted_ = false;
};

}  // namespace swiftpatch::e2e
