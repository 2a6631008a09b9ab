#pragma once

#include <filesystem>
#include <vector>

namespace publish {

/// Puts files in the places of others, by renaming, and puts those back if it is not kept: the last
/// one first.
class Placement {
public:
    /// What is replaced lies in `before`, a folder on the same file system, until it is decided.
    Placement(std::filesystem::path folder, std::filesystem::path before);
    ~Placement();
    Placement(const Placement&) = delete;
    Placement& operator=(const Placement&) = delete;

    /// Moves a file into the folder, under its name.
    void Place(const std::filesystem::path& file);
    /// Removes a folder with all that it holds if this is not kept.
    void Made(const std::filesystem::path& folder) { made_ = folder; }
    void Keep() { kept_ = true; }

private:
    void PutBack() const;

    std::filesystem::path folder_;
    std::filesystem::path before_;
    std::filesystem::path made_;
    std::vector<std::filesystem::path> names_;
    bool kept_ = false;
};

}  // namespace publish
