#pragma once

#include <filesystem>
#include <vector>

#include "publish/server_folder.h"

namespace publish {

/// Puts files in the places of others, by renaming, and can put those back.
class Placement {
public:
    /// What is replaced lies in `before`, a folder on the same file system, until it is decided.
    Placement(std::filesystem::path folder, std::filesystem::path before);

    /// Moves a file into the folder, under its name.
    void Place(const std::filesystem::path& file);
    /// What is kept beside the files goes with them.
    void Kept(const KeptPlace& place) { kept_ = place; }

    /// Undoes all of it, the last thing first. Where something stays replaced, what it replaced
    /// stays kept, and the result is false.
    bool PutBack() const;

private:
    std::filesystem::path folder_;
    std::filesystem::path before_;
    KeptPlace kept_;
    struct Placed {
        std::filesystem::path name;
        bool replaces = false;
    };

    std::vector<Placed> placed_;
};

}  // namespace publish
