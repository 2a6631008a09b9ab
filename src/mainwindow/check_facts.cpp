#include "mainwindow/check_facts.h"

#include "components/utilities.h"
#include "shared/branding.h"
#include "shared/paths.h"

namespace swiftpatch {
namespace {

constexpr std::int64_t kMinutesADay = std::int64_t{24} * 60;

std::string Lines(std::initializer_list<std::string> lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : "\r\n") + line;
    }
    return text;
}

}  // namespace

std::int64_t CheckFacts::SizeGap() const {
    return stagedDate ? std::int64_t{installedLength} - stagedLength : 0;
}

CheckOutcome Decide(const CheckFacts& facts) {
    if (facts.installedProductVersion == facts.stagedProductVersion && !facts.DownloadNeeded()) {
        return CheckOutcome::kLatestVersion;
    }
    // A staged build as long as the installed program is fetched again rather than offered: it may
    // be the installed one.
    if (facts.serverSize == facts.stagedLength && facts.stagedLength != 0 &&
        !facts.DownloadNeeded() && facts.SizeGap() != 0) {
        return CheckOutcome::kReadyToInstall;
    }
    return CheckOutcome::kDownload;
}

std::string UpdateInformation(const CheckFacts& facts) {
    const std::string staged = AppFile(kStagedBuild);
    const std::string installed = AppFile(kMainProgram);
    if (!facts.stagedDate) {
        return "Support Information is not available for " SWIFTPATCH_STAGED_PROGRAM
               " because the comparison "
               "file, '" +
               staged + "' is missing.";
    }
    return Lines(
        {"Update Information....",
         "Date of server file  " SWIFTPATCH_STAGED_PROGRAM "  = " +
             FormatDateMDY(facts.serverDate).value(),
         "with GMT offset of " + std::to_string(facts.gmtOffsetHours) + " hours.",
         "Date of app.path " SWIFTPATCH_STAGED_PROGRAM "    = " +
             FormatDateMDY(*facts.stagedDate).value(),
         "Server Version is:   " + std::to_string(facts.ageGap / kMinutesADay) + " days and " +
             std::to_string(facts.ageGap % kMinutesADay / 60) + " hours newer.",
         "Product Version '" + staged + "' = " + facts.stagedProductVersion,
         "Product Version '" + installed + "' = " + facts.installedProductVersion,
         "Size of Server      " SWIFTPATCH_STAGED_PROGRAM "  = " + std::to_string(facts.serverSize),
         "Size of '" + staged + "'  = " + std::to_string(facts.stagedLength),
         "Size of '" + installed + "'  = " + std::to_string(facts.installedLength)});
}

}  // namespace swiftpatch
