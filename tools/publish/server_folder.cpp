#include "publish/server_folder.h"

#include <algorithm>

#include "publish/files.h"
#include "publish/system.h"
#include "publish_check/utf8_path.h"
#include "shared/paths.h"

namespace publish {

namespace fs = std::filesystem;
using publish_check::PlainText;
using publish_check::Version;

namespace {

/// Builds of the same version are told apart by a number: "3.0.11.0-2".
constexpr char kNumberMark = '-';

std::optional<KeptBuild> ReadKept(const fs::path& folder) {
    const std::string name = publish_check::Utf8(folder.filename());
    const auto version = publish_check::ParseVersion(name.substr(0, name.find(kNumberMark)));
    if (!version || !fs::is_regular_file(folder / swiftpatch::kStagedBuild)) {
        return std::nullopt;
    }
    return KeptBuild{*version, folder};
}

/// The time at which a build was published; of two with the same version the later one counts.
bool IsBefore(const KeptBuild& one, const KeptBuild& other) {
    if (one.version != other.version) {
        return one.version > other.version;
    }
    return fs::last_write_time(one.folder / swiftpatch::kStagedBuild) >
           fs::last_write_time(other.folder / swiftpatch::kStagedBuild);
}

bool IsKeptIn(const fs::path& folder, const std::string& build) {
    const fs::path file = folder / swiftpatch::kStagedBuild;
    return fs::is_regular_file(file) && fs::file_size(file) == build.size() &&
           ReadFile(file) == build;
}

/// Complete before it gets its name.
void Keep(const fs::path& folder, const fs::path& place, const fs::path& unfinished) {
    fs::create_directory(unfinished);
    for (const char* name : {swiftpatch::kStagedBuild, swiftpatch::kBuildSignature}) {
        if (fs::exists(folder / name)) {
            CopyFile(folder / name, unfinished / name);
        }
    }
    FlushFolder(unfinished);
    fs::create_directory(folder / kKeptBuilds);
    fs::rename(unfinished, place);
    FlushFolder(folder / kKeptBuilds);
}

}  // namespace

std::optional<Version> VersionOf(const std::string& build) {
    const auto versions = publish_check::ReadFileVersions(build);
    return versions ? std::optional(versions->product) : std::nullopt;
}

std::vector<KeptBuild> KeptBuilds(const fs::path& folder) {
    std::vector<KeptBuild> builds;
    if (fs::is_directory(folder / kKeptBuilds)) {
        for (const fs::directory_entry& entry : fs::directory_iterator(folder / kKeptBuilds)) {
            if (const auto kept = ReadKept(entry.path())) {
                builds.push_back(*kept);
            }
        }
    }
    std::sort(builds.begin(), builds.end(), IsBefore);
    return builds;
}

std::optional<fs::path> KeepPresentBuild(const fs::path& folder, const std::string& presentBuild,
                                         const fs::path& scratch) {
    const auto version = VersionOf(presentBuild);
    const std::string name = version ? PlainText(*version) : "without-version";
    fs::path place = folder / kKeptBuilds / name;
    for (int number = 2; fs::exists(place); ++number) {
        if (IsKeptIn(place, presentBuild)) {
            return std::nullopt;
        }
        place = folder / kKeptBuilds / (name + kNumberMark + std::to_string(number));
    }
    Keep(folder, place, scratch);
    return place;
}

}  // namespace publish
