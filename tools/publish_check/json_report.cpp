#include <array>

#include "publish_check/json.h"
#include "publish_check/outcome.h"
#include "publish_check/report.h"

namespace publish_check {
namespace {

const char* NameOf(Severity severity) {
    constexpr std::array kNames{"ok", "note", "warning", "fault"};
    return kNames[static_cast<std::size_t>(severity)];
}

std::string FindingsJson(const std::vector<Finding>& findings) {
    return JsonList(findings, [](const Finding& finding) {
        return "{\"severity\":" + JsonText(NameOf(finding.severity)) +
               ",\"subject\":" + JsonText(finding.subject) + ",\"code\":" + JsonText(finding.code) +
               ",\"text\":" + JsonText(finding.text) + "}";
    });
}

std::string UpdaterJson(const VersionAssessment& updater) {
    return "{\"installed\":" + JsonText(updater.installed) +
           ",\"served\":" + JsonTruth(updater.served) +
           ",\"outcome\":" + JsonText(NameOf(updater.run.outcome)) +
           ",\"requests\":" + JsonList(updater.run.requests, JsonText) +
           ",\"findings\":" + FindingsJson(updater.findings) + "}";
}

}  // namespace

std::string JsonReport(const Assessment& assessment) {
    const auto& versions = assessment.versions;
    return "{\"address\":" + JsonText(assessment.address) +
           ",\"served\":" + JsonTruth(assessment.Served()) +
           ",\"productVersion\":" + (versions ? JsonText(ShownText(versions->product)) : "null") +
           ",\"fileVersion\":" + (versions ? JsonText(ShownText(versions->file)) : "null") +
           ",\"findings\":" + FindingsJson(assessment.findings) +
           ",\"updaters\":" + JsonList(assessment.updaters, UpdaterJson) + "}\n";
}

}  // namespace publish_check
