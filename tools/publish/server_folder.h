#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "publish_check/server_state.h"
#include "publish_check/version.h"

namespace publish {

// How a folder that updaters fetch from is laid out. Beside the files that they ask for it has
//
//     previous/3.0.11.0/    a build that was published before, with its signature and its date
//     .publish/             what publish works on: only there while it runs, or after it was killed

inline constexpr const char* kKeptBuilds = "previous";
inline constexpr const char* kWorkshop = ".publish";

/// A build that was published before.
struct KeptBuild {
    publish_check::Version version{};
    std::filesystem::path folder;
};

/// All of them, the highest version first; of the same version the last one that was kept.
std::vector<KeptBuild> KeptBuilds(const std::filesystem::path& folder);

/// Keeps the build that is there now, with its signature, unless it is kept already. Returns the
/// folder that was made for it. `scratch` is the name of a folder that can be made.
std::optional<std::filesystem::path> KeepPresentBuild(const std::filesystem::path& folder,
                                                      const std::string& presentBuild,
                                                      const std::filesystem::path& scratch);

/// The product version of a build, if it carries one.
std::optional<publish_check::Version> VersionOf(const std::string& build);

/// True when the folder has this file.
inline bool IsThere(const publish_check::PublishedFile& file) {
    constexpr int kOk = 200;
    return file.get.status == kOk;
}

}  // namespace publish
