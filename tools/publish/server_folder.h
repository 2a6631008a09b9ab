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
//     previous/3.0.11.0/            a build that was published before, with its signature and date
//     previous/3.0.11.0/withdrawn   where it was rolled back from
//     .publish/                     what publish works on: only there while it runs, after it was
//                                   killed, or after an upload that was broken off

inline constexpr const char* kKeptBuilds = "previous";
inline constexpr const char* kWorkshop = ".publish";

/// A build that was published before.
struct KeptBuild {
    publish_check::Version version{};
    std::filesystem::path folder;
    bool withdrawn = false;
};

/// All of them, the highest version first; of the same version the last one that was in service.
std::vector<KeptBuild> KeptBuilds(const std::filesystem::path& folder);

/// The one with this version, or else the one with the highest version below `present` that was
/// not rolled back from. Throws PublishError where there is none, or where another build lies in
/// its place.
KeptBuild KeptBuildToReturn(const std::filesystem::path& folder,
                            const std::optional<publish_check::Version>& wanted,
                            const std::optional<publish_check::Version>& present);

/// A place where a build is kept.
struct KeptPlace {
    std::filesystem::path folder;
    bool made = false;        ///< It was not kept before.
    bool madeParent = false;  ///< No build was.
};

/// Keeps the build that is there now, with its signature and date, unless it is kept already.
/// `scratch` is the name of a folder on the same file system that can be made.
KeptPlace KeepPresentBuild(const std::filesystem::path& folder, const std::string& presentBuild,
                           const std::filesystem::path& scratch);

/// Brings what is kept of a build up to date, after it was in service once more: with this
/// signature, if any, and date. `scratch` is the name of a file on the same file system.
void Refresh(const KeptPlace& kept, const std::string& signature,
             std::filesystem::file_time_type date, const std::filesystem::path& scratch);

/// Notes that a kept build was rolled back from.
void Withdraw(const KeptPlace& kept);

/// The product version of a build, if it carries one.
std::optional<publish_check::Version> VersionOf(const std::string& build);

/// True when the folder has this file.
inline bool IsThere(const publish_check::PublishedFile& file) {
    constexpr int kOk = 200;
    return file.get.status == kOk;
}

}  // namespace publish
