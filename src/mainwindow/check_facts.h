#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "runtime/datetime.h"

namespace swiftpatch {

/// The smallest size in bytes that a build on the server can have.
inline constexpr std::int32_t kSmallestBuild = 80000;
/// The smallest size in bytes that the busy animation on the server can have.
inline constexpr std::int32_t kSmallestAnimation = 1636;

/// What the update check has found out, kept for the later stages.
struct CheckFacts {
    std::string serverUrl;        ///< Of the new build.
    std::int32_t serverSize = 0;  ///< Bytes; -1 unknown.
    std::string serverDateText;
    DateTime serverDate{};  ///< Local time.
    std::int64_t gmtOffsetHours = 0;
    std::optional<DateTime> stagedDate;  ///< Local time; nothing when there is no staged build.
    std::int64_t ageGap = 0;  ///< Minutes by which the server's build is newer than the staged.
    std::int32_t stagedLength = 0;
    std::int32_t installedLength = 0;
    std::string stagedProductVersion;
    std::string installedProductVersion;

    /// True when the staged build is missing or at least one minute older than the server's.
    bool DownloadNeeded() const { return !stagedDate || ageGap > 0; }
    /// By how much the staged build is smaller than the installed program; 0 without a staged one.
    std::int64_t SizeGap() const;
};

enum class CheckOutcome { kLatestVersion, kReadyToInstall, kDownload };

/// What has to be done about a server build of at least kSmallestBuild bytes.
CheckOutcome Decide(const CheckFacts& facts);

/// The update information report, its lines separated by CR LF.
std::string UpdateInformation(const CheckFacts& facts);

}  // namespace swiftpatch
