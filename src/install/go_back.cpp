#include "install/go_back.h"

#include <algorithm>
#include <vector>

#include "install/build_signature.h"
#include "install/modVersion.h"
#include "runtime/app.h"
#include "runtime/files.h"
#include "runtime/runtime_error.h"
#include "runtime/strings.h"
#include "shared/branding.h"
#include "shared/paths.h"
#include "shared/shared_state.h"

namespace swiftpatch {
namespace {

constexpr std::string_view kBeforeVersion = SWIFTPATCH_BACKUP_STEM ".";
constexpr std::string_view kAfterVersion = ".exe";

bool IsBelow(const std::string& version, const std::string& other) {
    return IsDowngrade(other, version);
}

/// As the version block gives it: five digits, and a minus where it shows a part above 32767.
bool IsPart(std::string_view part) {
    constexpr std::size_t kMostDigits = 5;
    const std::string_view digits = part.substr(part.starts_with('-') ? 1 : 0);
    return !digits.empty() && digits.size() <= kMostDigits &&
           digits.find_first_not_of("0123456789") == std::string_view::npos;
}

bool IsVersion(const std::string& text) {
    constexpr std::size_t kParts = 4;
    const std::vector<std::string> parts = Split(text, '.');
    return parts.size() == kParts && std::all_of(parts.begin(), parts.end(), IsPart);
}

/// The version that a name tells of; empty where it is no backup's.
std::string VersionInName(const std::string& name) {
    const std::size_t around = kBeforeVersion.size() + kAfterVersion.size();
    if (name.size() <= around ||
        !EqualWithoutCase(name.substr(0, kBeforeVersion.size()), kBeforeVersion) ||
        !EqualWithoutCase(name.substr(name.size() - kAfterVersion.size()), kAfterVersion)) {
        return {};
    }
    const std::string version = name.substr(kBeforeVersion.size(), name.size() - around);
    return IsVersion(version) ? version : std::string();
}

std::vector<std::string> VersionsBelow(const std::string& installed) {
    std::vector<std::string> versions;
    for (const std::string& name : FilesIn(App::Path())) {
        const std::string version = VersionInName(name);
        if (!version.empty() && IsBelow(version, installed)) {
            versions.push_back(version);
        }
    }
    return versions;
}

}  // namespace

std::string BackupName(const std::string& version) {
    return std::string(kBeforeVersion) + version + std::string(kAfterVersion);
}

/// The file's own version block has to say what its name says, to the letter: that is how an
/// install keeps a build. Where they differ somebody else has put it there or has renamed it, and
/// nobody knows that it was ever installed here; it is left alone.
bool HasBackup(const std::string& version) {
    const std::string path = AppFile(BackupName(version));
    return !version.empty() && FileExists(path) &&
           modVersion::ReadFileVersion(path).ProductVersion == version && ProgramIsWhole(path);
}

std::string InstalledProductVersion() {
    return modVersion::ReadFileVersion(AppFile(kMainProgram)).ProductVersion;
}

std::string FindBackup() {
    const std::string installed = InstalledProductVersion();
    if (installed.empty()) {
        return {};
    }
    // The names come first, so that of many builds only the newest are opened.
    std::vector<std::string> versions = VersionsBelow(installed);
    while (!versions.empty()) {
        const auto newest = std::max_element(versions.begin(), versions.end(), IsBelow);
        if (HasBackup(*newest)) {
            return *newest;
        }
        versions.erase(newest);
    }
    return {};
}

bool WasGoneBackFrom(const std::string& version) {
    if (!shared.OfferBackups) {
        return false;
    }
    const std::string installed = InstalledProductVersion();
    return !installed.empty() && IsBelow(installed, version) && HasBackup(version);
}

void KeepInstalledBuild() {
    const std::string version = InstalledProductVersion();
    if (HasBackup(version) || !FileExists(AppFile(kMainProgram))) {
        return;
    }
    const std::string backup = AppFile(BackupName(version));
    // What has the name is not whole or not of this version, but may be all that somebody has of
    // it.
    if (version.empty() || FileExists(backup)) {
        throw RuntimeError(error_number::kPathFileAccess);
    }
    FileCopy(AppFile(kMainProgram), backup);
}

void GoBack(const std::string& version) {
    const std::string backup = AppFile(BackupName(version));
    // From the last look at it until it has been copied nobody can exchange it.
    const LockedFile locked(backup);
    if (!HasBackup(version)) {
        throw RuntimeError(error_number::kFileNotFound);
    }
    FileCopy(backup, AppFile(kMainProgram));
}

}  // namespace swiftpatch
