#include <array>
#include <string_view>

#include "publish_check/outcome.h"
#include "publish_check/report.h"

namespace publish_check {
namespace {

/// Bytes above 127 are written as the characters of the same number, so that the result can be read
/// whatever a server sends.
std::string Text(const std::string& text) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string json = "\"";
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte == '"' || byte == '\\') {
            json += '\\';
            json += character;
        } else if (byte < ' ' || byte > '~') {
            json += "\\u00";
            json += kDigits[byte >> 4U];
            json += kDigits[byte & 15U];
        } else {
            json += character;
        }
    }
    return json + "\"";
}

std::string Truth(bool value) { return value ? "true" : "false"; }

/// Each item's text, in brackets.
template <typename Items, typename Write>
std::string List(const Items& items, Write write) {
    std::string json;
    for (const auto& item : items) {
        json += (json.empty() ? "" : ",") + write(item);
    }
    return "[" + json + "]";
}

const char* NameOf(Severity severity) {
    constexpr std::array kNames{"ok", "note", "warning", "fault"};
    return kNames[static_cast<std::size_t>(severity)];
}

std::string FindingsJson(const std::vector<Finding>& findings) {
    return List(findings, [](const Finding& finding) {
        return "{\"severity\":" + Text(NameOf(finding.severity)) +
               ",\"subject\":" + Text(finding.subject) + ",\"code\":" + Text(finding.code) +
               ",\"text\":" + Text(finding.text) + "}";
    });
}

std::string UpdaterJson(const VersionAssessment& updater) {
    return "{\"installed\":" + Text(updater.installed) + ",\"served\":" + Truth(updater.served) +
           ",\"outcome\":" + Text(NameOf(updater.run.outcome)) +
           ",\"requests\":" + List(updater.run.requests, Text) +
           ",\"findings\":" + FindingsJson(updater.findings) + "}";
}

}  // namespace

std::string JsonReport(const Assessment& assessment) {
    const auto& versions = assessment.versions;
    return "{\"address\":" + Text(assessment.address) +
           ",\"served\":" + Truth(assessment.Served()) +
           ",\"productVersion\":" + (versions ? Text(ShownText(versions->product)) : "null") +
           ",\"fileVersion\":" + (versions ? Text(ShownText(versions->file)) : "null") +
           ",\"findings\":" + FindingsJson(assessment.findings) +
           ",\"updaters\":" + List(assessment.updaters, UpdaterJson) + "}\n";
}

}  // namespace publish_check
