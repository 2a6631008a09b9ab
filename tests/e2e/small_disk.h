#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

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
    /// Takes all names that are left, so that no new file can be made, or gives them back.
    void TakeNames() const;
    void GiveNamesBack() const;

private:
    std::filesystem::path Filler() const { return folder_ / "filler"; }
    std::filesystem::path Name(int number) const {
        return folder_ / ("name" + std::to_string(number));
    }

    std::filesystem::path folder_;
    std::filesystem::path marker_;
    bool mounted_ = false;
};

}  // namespace swiftpatch::e2e
