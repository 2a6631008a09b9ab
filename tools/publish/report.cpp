#include "publish/report.h"

#include <algorithm>
#include <array>

#include "publish/judgement.h"
#include "publish/server_folder.h"
#include "publish_check/json.h"
#include "publish_check/live_server.h"
#include "publish_check/report.h"
#include "shared/paths.h"

namespace publish {

using publish_check::Assessment;
using publish_check::JsonText;
using publish_check::JsonTruth;

namespace {

std::string LeftSentence(Left left) {
    switch (left) {
        case Left::kUploaded:
            return " The copy of the folder is as it was; the server can have either build. Call "
                   "publish again.";
        case Left::kChanged:
            return std::string(" What was replaced could NOT be put back: look into ") +
                   kKeptBuilds + ", where the build before is kept.";
        default:
            return " The folder is as it was.";
    }
}

const char* NameOf(Left left) {
    constexpr std::array kNames{"as-it-was", "uploaded", "changed"};
    return kNames[static_cast<std::size_t>(left)];
}

bool HasFinding(const publish_check::VersionAssessment& updater, const std::string& code) {
    return std::any_of(updater.findings.begin(), updater.findings.end(),
                       [&code](const publish_check::Finding& each) { return each.code == code; });
}

/// Whether those who have the build that was rolled back from follow.
std::string WhoFollows(const Assessment& assessment) {
    std::string text;
    for (const publish_check::VersionAssessment& updater : assessment.updaters) {
        text += "Machines with " + updater.installed +
                (HasFinding(updater, "downgrade")
                     ? " are offered it in their second run from now.\n"
                     : " keep that until a higher version is published.\n");
    }
    return text;
}

std::string EndSentence(const Order& order, const Report& report) {
    const std::string& version = report.result.version;
    if (!report.result.published) {
        const std::string why =
            report.problem.empty() ? "the lines marked FAULT say why" : report.problem;
        return "NOT PUBLISHED: " + why + "." + LeftSentence(report.left) + "\n";
    }
    const std::string follows = order.rollBack ? WhoFollows(*report.result.assessment) : "";
    if (order.dryRun) {
        return version + " can be published; nothing was changed.\n" + follows;
    }
    return version + " is published.\n" + follows;
}

std::string LivePart(const LiveLook& look) {
    return "\n" + (look.assessment ? publish_check::PlainReport(*look.assessment)
                                   : "NOT SERVED: " + look.problem + "\n");
}

std::string JsonOf(const std::optional<Assessment>& assessment) {
    if (!assessment) {
        return "null";
    }
    std::string json = publish_check::JsonReport(*assessment);
    json.pop_back();
    return json;
}

}  // namespace

LiveLook LookAtServer(const Order& order, const Result& result) {
    LiveLook look;
    try {
        const publish_check::ServerState state =
            publish_check::ReadLiveServer(order.address, order.keys.has_value());
        look.assessment = AssessFor(order, state, result.installed);
        look.assessment->address = order.address;
        if (!look.assessment->versions || !result.assessment->versions ||
            look.assessment->versions->product != result.assessment->versions->product) {
            publish_check::Findings(look.assessment->findings, swiftpatch::kStagedBuild)
                .Fault("another-build", "The server gives another build than " + result.version +
                                            ", which has been published.");
        }
    } catch (const std::exception& error) {
        look.problem = error.what();
    }
    return look;
}

std::string PlainReport(const Order& order, const Report& report) {
    std::string text;
    if (report.result.assessment) {
        text = "\n" + publish_check::PlainReport(*report.result.assessment) + "\n";
    }
    text += EndSentence(order, report);
    return report.live ? text + LivePart(*report.live) : text;
}

std::string JsonReport(const Order& order, const Steps& steps, const Report& report) {
    const auto step = [](const Step& each) {
        return "{\"kind\":" + JsonText(each.kind) + ",\"text\":" + JsonText(each.text) + "}";
    };
    std::string json = "{\"published\":" + JsonTruth(report.result.published && !order.dryRun) +
                       ",\"publishable\":" + JsonTruth(report.result.published) +
                       ",\"dryRun\":" + JsonTruth(order.dryRun) +
                       ",\"version\":" + JsonText(report.result.version) +
                       ",\"problem\":" + JsonText(report.problem) +
                       ",\"left\":" + JsonText(NameOf(report.left)) +
                       ",\"steps\":" + publish_check::JsonList(steps.List(), step) +
                       ",\"check\":" + JsonOf(report.result.assessment);
    if (report.live) {
        json += ",\"server\":{\"problem\":" + JsonText(report.live->problem) +
                ",\"check\":" + JsonOf(report.live->assessment) + "}";
    }
    return json + "}\n";
}

}  // namespace publish
