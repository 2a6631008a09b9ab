#include "publish/judgement.h"

#include <algorithm>
#include <chrono>

#include "publish/files.h"
#include "publish/server_folder.h"
#include "publish_check/folder_findings.h"
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

bool IsKeptIn(const KeptBuild& kept, const ServerState& state) {
    return ReadFile(kept.folder / swiftpatch::kStagedBuild) == state.build.get.body;
}

void CompareVersions(const Order& order, const ServerState& present, const StagedRelease& release,
                     const Version& version, publish_check::Findings& findings) {
    const auto before = VersionOf(present.build.get.body);
    const std::vector<KeptBuild> builds = KeptBuilds(order.folder);
    const bool usedBefore = std::any_of(builds.begin(), builds.end(), [&](const KeptBuild& kept) {
        return kept.version == version && !IsKeptIn(kept, release.State());
    });
    if (before && version < *before) {
        findings.Fault("older", "It is older than the build that is there now, " +
                                    PlainText(*before) +
                                    ". To bring a build back use --roll-back.");
    } else if (version == before || usedBefore) {
        findings.Fault("same-version", "Another build with its version, " + PlainText(version) +
                                           ", is or was there: nobody who has that would be "
                                           "offered this one.");
    }
}

}  // namespace

std::vector<Installed> VersionsInTheField(const Order& order, const ServerState& present,
                                          const std::optional<Version>& back) {
    std::vector<Installed> list = order.installed;
    if (!list.empty()) {
        return list;
    }
    const auto add = [&](const Version& version) {
        if (!back || version > *back) {
            AddOnce(list, version);
        }
    };
    if (const auto version = VersionOf(present.build.get.body)) {
        add(*version);
    }
    for (const KeptBuild& kept : KeptBuilds(order.folder)) {
        add(kept.version);
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

void CompareWithBefore(const Order& order, const ServerState& present, const StagedRelease& release,
                       Assessment& assessment) {
    publish_check::Findings findings(assessment.findings, swiftpatch::kStagedBuild);
    if (release.LosesKey()) {
        findings.Fault("lost-key",
                       "The build that is there is signed with a key that has not signed this one, "
                       "and updaters that know no other would refuse it. Sign with both, or name "
                       "the keys of all updaters with --keys.");
    }
    if (!release.ChangesBuild() || !IsThere(present.build)) {
        return;
    }
    const auto before = publish_check::PublishedDate(present);
    const auto date = publish_check::PublishedDate(release.State());
    if (before && date && *date < *before) {
        findings.Fault("earlier-date",
                       "The build that is there has a later date than the clock of this machine: "
                       "who has fetched that would not fetch this one. Set the clock, or that "
                       "date, right.");
    }
    if (assessment.versions && !order.rollBack) {
        CompareVersions(order, present, release, assessment.versions->product, findings);
    }
}

}  // namespace publish
