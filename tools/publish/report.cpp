#include "publish/report.h"

#include "publish/judgement.h"
#include "publish_check/json.h"
#include "publish_check/live_server.h"
#include "publish_check/report.h"
#include "shared/paths.h"

namespace publish {

using publish_check::Assessment;
using publish_check::JsonText;
using publish_check::JsonTruth;

namespace {

std::string EndSentence(const Order& order, const Report& report) {
    const std::string& version = report.result.version;
    if (!report.problem.empty()) {
        return "NOT PUBLISHED: " + report.problem + ". The folder is as it was.\n";
    }
    if (!report.result.published) {
        return "NOT PUBLISHED: the lines marked FAULT say why. The folder is as it was.\n";
    }
    if (order.dryRun) {
        return version + " can be published; nothing was changed.\n";
    }
    return version + " is published.\n";
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
                       ",\"steps\":" + publish_check::JsonList(steps.List(), step) +
                       ",\"check\":" + JsonOf(report.result.assessment);
    if (report.live) {
        json += ",\"server\":{\"problem\":" + JsonText(report.live->problem) +
                ",\"check\":" + JsonOf(report.live->assessment) + "}";
    }
    return json + "}\n";
}

}  // namespace publish
