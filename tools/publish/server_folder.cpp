#include "publish/server_folder.h"

#include <algorithm>

#include "publish/files.h"
#include "publish/publish_error.h"
#include "publish/system.h"
#include "publish_check/utf8_path.h"
#include "shared/paths.h"

namespace publish {

namespace fs = std::filesystem;
using publish_check::PlainText;
using publish_check::Utf8;
using publish_check::Version;

namespace {

/// Builds of the same version are told apart by a number: "3.0.11.0-2".
constexpr char kNumberMark = '-';
constexpr const char* kWithdrawn = "withdrawn";

std::optional<KeptBuild> ReadKept(const fs::path& folder) {
    const std::string name = Utf8(folder.filename());
    const auto version = publish_check::ParseVersion(name.substr(0, name.find(kNumberMark)));
    if (!version || !fs::is_regular_file(folder / swiftpatch::kStagedBuild)) {
        return std::nullopt;
    }
    return KeptBuild{*version, folder, fs::exists(folder / kWithdrawn)};
}

/// The file's date is the time at which the build was put into service.
bool ComesFirst(const KeptBuild& one, const KeptBuild& other) {
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
    fs::create_directory(place.parent_path());
    fs::rename(unfinished, place);
    FlushFolder(place.parent_path());
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
    std::sort(builds.begin(), builds.end(), ComesFirst);
    return builds;
}

KeptBuild KeptBuildToReturn(const fs::path& folder, const std::optional<Version>& wanted,
                            const std::optional<Version>& present) {
    const std::vector<KeptBuild> builds = KeptBuilds(folder);
    const auto kept = std::find_if(builds.begin(), builds.end(), [&](const KeptBuild& each) {
        return wanted ? each.version == *wanted
                      : !each.withdrawn && (!present || each.version < *present);
    });
    if (kept == builds.end()) {
        const std::string place = " was kept in " + Utf8(folder / kKeptBuilds);
        throw PublishError(wanted ? "no build of version " + PlainText(*wanted) + place
                                  : "no build with a lower version" + place +
                                        ", but for those that were rolled back from");
    }
    if (VersionOf(ReadFile(kept->folder / swiftpatch::kStagedBuild)) != kept->version) {
        throw PublishError("the build in " + Utf8(kept->folder) +
                           " is not of that version, or damaged: name another one with --to");
    }
    return *kept;
}

KeptPlace KeepPresentBuild(const fs::path& folder, const std::string& presentBuild,
                           const fs::path& scratch) {
    const auto version = VersionOf(presentBuild);
    const std::string name = version ? PlainText(*version) : "without-version";
    const bool madeParent = !fs::exists(folder / kKeptBuilds);
    fs::path place = folder / kKeptBuilds / name;
    for (int number = 2; fs::exists(place); ++number) {
        if (IsKeptIn(place, presentBuild)) {
            return {place, false, false};
        }
        place = folder / kKeptBuilds / (name + kNumberMark + std::to_string(number));
    }
    Keep(folder, place, scratch);
    return {place, true, madeParent};
}

void Refresh(const KeptPlace& kept, const std::string& signature, fs::file_time_type date,
             const fs::path& scratch) {
    fs::last_write_time(kept.folder / swiftpatch::kStagedBuild, date);
    if (!signature.empty()) {
        ReplaceFile(kept.folder / swiftpatch::kBuildSignature, signature, scratch);
    }
    fs::remove(kept.folder / kWithdrawn);
}

void Withdraw(const KeptPlace& kept) {
    WriteFile(kept.folder / kWithdrawn, "This build was rolled back from.\n");
}

}  // namespace publish
