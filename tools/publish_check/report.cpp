#include "publish_check/report.h"

#include "publish_check/outcome.h"

namespace publish_check {
namespace {

const char* MarkOf(Severity severity) {
    switch (severity) {
        case Severity::kGood:
            return "  ok       ";
        case Severity::kNote:
            return "  note     ";
        case Severity::kWarning:
            return "  WARNING  ";
        default:
            return "  FAULT    ";
    }
}

std::string Lines(const std::vector<Finding>& findings) {
    std::string text;
    for (const Finding& finding : findings) {
        text += MarkOf(finding.severity) + finding.text + "\n";
    }
    return text;
}

std::string FolderPart(const std::vector<Finding>& findings) {
    std::string text;
    std::string subject;
    for (const Finding& finding : findings) {
        if (finding.subject != subject) {
            subject = finding.subject;
            text += "\n" + subject + "\n";
        }
        text += Lines({finding});
    }
    return text;
}

std::string RequestsPart(const FieldRun& run) {
    std::string text;
    for (const std::string& request : run.requests) {
        text += (text.empty() ? "" : ", ") + request;
    }
    return "  asks     " + (text.empty() ? "nothing" : text) + "\n";
}

}  // namespace

std::string PlainReport(const Assessment& assessment) {
    std::string text = "Server folder: " + assessment.address + "\n";
    text += FolderPart(assessment.findings);
    for (const VersionAssessment& updater : assessment.updaters) {
        text += "\nAn updater beside " +
                (updater.installed == "none" ? "no main program" : "version " + updater.installed) +
                "\n" + Lines(updater.findings) + RequestsPart(updater.run);
    }
    return text + (assessment.Served() ? "\nEvery updater would be served.\n"
                                       : "\nNot every updater would be served.\n");
}

}  // namespace publish_check
