#pragma once

#include <filesystem>

namespace swiftpatch::e2e {

/// Keeps everybody from making, renaming or deleting files in a folder as long as it lives, and by
/// itself no longer than two minutes. It asks the system below Wine for that, since Wine has no
/// such folders; where that cannot be had, for want of rights or of Wine, it has no effect.
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(const std::filesystem::path& folder);
    ~ReadOnlyFolder();
    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

    bool Effective() const { return effective_; }

private:
    std::filesystem::path folder_;
    std::filesystem::path marker_;
    bool effective_ = false;
};

}  // namespace swiftpatch::e2e
