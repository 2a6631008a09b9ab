#include "publish/judgement.h"

#include <algorithm>
#include <chrono>

#include "publish/server_folder.h"
#include "publish_check/utf8_path.h"
#include "shared/paths.h"

namespace publish {

using publish_check::Assessment;
using publish_check::Installed;
using publish_check::PlainText;
using publish_check::ServerState;
using publish_check::Version;

namespace {

void AddOnce(std::vector<Installed>& list, const Version& version) {
    const bool known = std::any_of(list.begin(), list.end(), [&version](const Installed& each) {
        return each.version == version;
    });
    if (!known) {
        list.push_back({version});
    }
}

}  // namespace

std::vector<Installed> VersionsInTheField(const Order& order, const ServerState& present) {
    std::vector<Installed> list = order.installed;
    if (!list.empty()) {
        return list;
    }
    if (const auto version = VersionOf(present.build.get.body)) {
        AddOnce(list, *version);
    }
    if (!order.rollBack) {
        for (const KeptBuild& kept : KeptBuilds(order.folder)) {
            AddOnce(list, kept.version);
        }
    }
    return list;
}

Assessment AssessFor(const Order& order, const ServerState& state,
                     const std::vector<Installed>& installed) {
    const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    Assessment assessment =
        Assess(state, installed, swiftpatch::DateTime(now.time_since_epoch()), order.keys);
    assessment.address = publish_check::Utf8(order.folder);
    return assessment;
}

void CompareWithPresent(const ServerState& present, bool changesBuild, bool comesBack,
                        Assessment& assessment) {
    const auto before = VersionOf(present.build.get.body);
    if (!before || !assessment.versions || !changesBuild || comesBack) {
        return;
    }
    publish_check::Findings findings(assessment.findings, swiftpatch::kStagedBuild);
    const std::string text = PlainText(*before);
    if (assessment.versions->product < *before) {
        findings.Fault("older", "It is older than the build that is there now, " + text +
                                    ". To bring a build back use --roll-back.");
    } else if (assessment.versions->product == *before) {
        findings.Fault("same-version",
                       "It has the version of the build that is there now, " + text +
                           ", and is another one: nobody who has that would be offered it.");
    }
}

}  // namespace publish
