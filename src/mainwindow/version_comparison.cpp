#include "mainwindow/version_comparison.h"

#include <vector>

#include "mainwindow/frmSwiftPatch.h"
#include "runtime/files.h"
#include "runtime/numbers.h"
#include "runtime/strings.h"
#include "shared/paths.h"

namespace swiftpatch {
namespace {

std::int32_t Part(const std::vector<std::string>& parts, std::size_t index) {
    if (index >= parts.size()) {
        throw RuntimeError(error_number::kSubscriptOutOfRange);
    }
    return ToLong(parts[index]);
}

}  // namespace

std::int16_t CompareVersionTexts(const std::string& installed, const std::string& offered) {
    const std::int16_t preset =
        offered.empty() ? comparison::kNothingOffered : comparison::kNewerOffered;
    if (installed.empty()) {
        return preset;
    }
    const std::vector<std::string> a = Split(installed, '.');
    const std::vector<std::string> b = Split(offered, '.');
    if (Part(a, 0) > Part(b, 0)) {
        return comparison::kNothingNewer;
    }
    // Also when the major part on offer is the higher one: 2.9 against 3.0 finds nothing newer.
    // Deliberate; publishers number their builds by it.
    if (Part(a, 1) > Part(b, 1)) {
        return comparison::kNothingNewer;
    }
    if (Part(a, 2) > Part(b, 2) && Part(a, 1) == Part(b, 1)) {
        return comparison::kNothingNewer;
    }
    const bool equal =
        Part(a, 0) == Part(b, 0) && Part(a, 1) == Part(b, 1) && Part(a, 2) == Part(b, 2);
    return equal ? comparison::kNothingNewer : preset;
}

void frmSwiftPatch::CompareProductVersions(const std::string& name, std::int16_t& result) {
    if (!FileExists(AppFile(name))) {
        result = comparison::kNamedFileMissing;
        return;
    }
    const std::string installed = modVersion::GetFileVersion(AppFile(name)).ProductVersion;
    stagedVersion = modVersion::GetFileVersion(AppFile(kStagedBuild));
    const std::string& offered = stagedVersion.ProductVersion;
    ShowVersionOnOffer(offered);
    lblTolvexVersion.Visible = true;
    result = CompareVersionTexts(installed, offered);
}

}  // namespace swiftpatch
