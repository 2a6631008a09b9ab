#include "publish_check/assessment.h"

#include <algorithm>

#include "install/build_signature.h"
#include "publish_check/folder_findings.h"
#include "publish_check/outcome.h"
#include "publish_check/outcome_text.h"
#include "shared/paths.h"

namespace publish_check {

using swiftpatch::DateTime;

namespace {

constexpr Version kOldest{0, 0, 0, 0};
constexpr std::size_t kUsualSize = 250000;  // Of a program whose size nobody knows.
constexpr const char* kAnyAnimation = "RIFF";
constexpr std::int64_t kMinutesADay = std::int64_t{24} * 60;

/// The runs of one installed program, on machines with different pasts.
class Updater {
public:
    Updater(const ServerState& state, const Installed& installed, DateTime now,
            const std::optional<std::string>& keys)
        : state_(state), installed_(installed), now_(now), keys_(keys) {}

    VersionAssessment Assess();

private:
    enum class Standing { kOlder, kSame, kNewer };

    FieldMachine NewMachine() const;
    std::size_t InstalledSize() const;
    Standing StandingOfInstalled() const;
    bool Serves(const FieldRun& run) const;
    bool IsDowngrade() const;
    void JudgeFirstRun(Findings& findings);
    void JudgeNextRun(const FieldRun& next, Findings& findings) const;
    void JudgeEarlierFetch(Findings& findings);
    void JudgeMissingAnimation(Findings& findings);

    const ServerState& state_;
    PublishedFolder folder_{state_};
    Installed installed_;
    DateTime now_;
    const std::optional<std::string>& keys_;
    std::optional<FileVersions> offered_ = ReadFileVersions(state_.build.get.body);
    VersionAssessment result_;
};

VersionAssessment Updater::Assess() {
    result_.installed = installed_.version ? ShownText(*installed_.version) : "none";
    Findings findings(result_.findings, "updater");
    FieldMachine machine = NewMachine();
    machine.PutFile(swiftpatch::kBusyAnimation, kAnyAnimation);
    result_.run = machine.Run(folder_);
    result_.served = Serves(result_.run);
    JudgeFirstRun(findings);
    if (result_.run.Asked(std::string("GET ") + swiftpatch::kStagedBuild)) {
        JudgeNextRun(machine.Run(folder_), findings);
    }
    if (result_.served) {
        JudgeEarlierFetch(findings);
        JudgeMissingAnimation(findings);
    }
    return result_;
}

/// As long as the published build it would be taken for it in one place.
std::size_t Updater::InstalledSize() const {
    return state_.build.get.body.size() == kUsualSize ? kUsualSize + 1 : kUsualSize;
}

FieldMachine Updater::NewMachine() const {
    FieldMachine machine(now_, keys_);
    if (installed_.version) {
        machine.PutBuild(swiftpatch::kMainProgram, installed_.version, InstalledSize());
    }
    return machine;
}

Updater::Standing Updater::StandingOfInstalled() const {
    if (!installed_.version || !offered_ || *installed_.version < offered_->product) {
        return Standing::kOlder;
    }
    return *installed_.version == offered_->product ? Standing::kSame : Standing::kNewer;
}

bool Updater::Serves(const FieldRun& run) const {
    if (run.outcome == Outcome::kOffered) {
        return StandingOfInstalled() == Standing::kOlder;
    }
    return StandingOfInstalled() != Standing::kOlder &&
           (run.outcome == Outcome::kNothingNewer || run.outcome == Outcome::kLatest);
}

/// As an updater sees it whose builds have to be signed.
bool Updater::IsDowngrade() const {
    return StandingOfInstalled() == Standing::kNewer &&
           swiftpatch::IsDowngrade(ShownText(*installed_.version), ShownText(offered_->product));
}

void Updater::JudgeFirstRun(Findings& findings) {
    const std::string text = Sentence(result_.run, result_.installed, offered_);
    if (result_.served) {
        findings.Good(NameOf(result_.run.outcome), text);
    } else if (result_.run.outcome == Outcome::kNothingNewer) {
        findings.Fault("hidden", text + " " + ReasonHidden(*installed_.version, offered_->product));
    } else if (result_.run.outcome == Outcome::kOffered) {
        findings.Fault("downgrade", text + " That is NOT newer than the installed program.");
    } else {
        findings.Fault(NameOf(result_.run.outcome), text);
    }
    if (keys_ && result_.served && IsDowngrade()) {
        findings.Warn("older",
                      "The published build is OLDER than the installed one, and where builds have "
                      "to be signed that is never offered. To go back, publish it again under a "
                      "higher version.");
    }
}

/// The build that was fetched lies there now, and another rule decides about it.
void Updater::JudgeNextRun(const FieldRun& next, Findings& findings) const {
    if (next.Asked(std::string("GET ") + swiftpatch::kStagedBuild)) {
        findings.Fault("fetched-again", "Its next run fetches the whole build again.");
    } else if (next.outcome != Outcome::kOffered) {
        return;
    } else if (StandingOfInstalled() == Standing::kNewer) {
        findings.Warn("downgrade",
                      "Its next run offers to install the published build, which is "
                      "OLDER than the installed one.");
    } else if (result_.run.outcome == Outcome::kNothingNewer) {
        findings.Note("offered-later", "Only its next run offers to install the build.");
    }
}

/// An updater that brought the installed build itself still has it, with the time of that download.
void Updater::JudgeEarlierFetch(Findings& findings) {
    if (StandingOfInstalled() != Standing::kOlder || !installed_.version) {
        return;
    }
    const auto published = PublishedDate(state_);
    const DateTime fetched = published ? swiftpatch::AddMinutes(*published, -1)
                                       : swiftpatch::AddMinutes(now_, -kMinutesADay);
    FieldMachine machine = NewMachine();
    machine.PutFile(swiftpatch::kBusyAnimation, kAnyAnimation);
    machine.PutBuild(swiftpatch::kStagedBuild, installed_.version, InstalledSize(), fetched);
    const FieldRun run = machine.Run(folder_);
    if (!Serves(run)) {
        result_.served = false;
        findings.Fault("not-after-earlier-fetch",
                       "Where the updater fetched the installed build itself: " +
                           Sentence(run, result_.installed, offered_));
    }
}

void Updater::JudgeMissingAnimation(Findings& findings) {
    FieldMachine machine = NewMachine();
    const FieldRun run = machine.Run(folder_);
    if (!Serves(run)) {
        result_.served = false;
        findings.Fault("not-without-animation",
                       std::string("Where ") + swiftpatch::kBusyAnimation +
                           " is missing: " + Sentence(run, result_.installed, offered_));
    }
}

bool HasFault(const std::vector<Finding>& findings) {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.severity == Severity::kFault; });
}

}  // namespace

bool Assessment::Served() const {
    return !HasFault(findings) &&
           std::none_of(updaters.begin(), updaters.end(), [](const VersionAssessment& updater) {
               return !updater.served || HasFault(updater.findings);
           });
}

Assessment Assess(const ServerState& state, const std::vector<Installed>& installed, DateTime now,
                  const std::optional<std::string>& keys) {
    Assessment assessment;
    assessment.address = state.address;
    assessment.versions = ReadFileVersions(state.build.get.body);
    assessment.findings = FolderFindings(state, now, keys);
    std::vector<Installed> asked = installed;
    if (asked.empty()) {
        asked.push_back({kOldest});
    }
    for (const Installed& each : asked) {
        assessment.updaters.push_back(Updater(state, each, now, keys).Assess());
    }
    return assessment;
}

}  // namespace publish_check
