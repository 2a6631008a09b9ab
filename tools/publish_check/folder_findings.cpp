#include "publish_check/folder_findings.h"

#include "mainwindow/check_facts.h"
#include "net/header_probe.h"
#include "net/modDeclarations.h"
#include "publish_check/animation_file.h"
#include "publish_check/signature_findings.h"
#include "publish_check/version.h"
#include "runtime/internal/http_headers.h"
#include "runtime/runtime_error.h"
#include "shared/paths.h"

namespace publish_check {

using swiftpatch::DateTime;

namespace {

constexpr int kFirstRefusal = 400;
constexpr int kTooManyRequests = 429;
constexpr int kUnavailable = 503;
constexpr std::int64_t kFewDays = 30;

std::string Count(std::int64_t bytes) { return std::to_string(bytes) + " bytes"; }

std::string TextOf(DateTime time) {
    return swiftpatch::FormatLongDate(time) + ", " + swiftpatch::FormatTime12(time) + " UTC";
}

/// The size that the updater reads out of an answer to HEAD; -1 for none.
std::int32_t SizeIn(const Answer& head) {
    try {
        return swiftpatch::SizeFromHeader(swiftpatch::HeaderValue(head.headers, "Content-length"));
    } catch (const swiftpatch::RuntimeError&) {
        return -1;
    }
}

/// Says whether a file is there; false when there is nothing more to say about it.
bool CheckAnswer(const PublishedFile& file, const std::string& name, Findings& findings) {
    WarnOfOtherCase(file, name, findings);
    if (!file.head.answered) {
        findings.Fault("no-answer", "HEAD is not answered: " + file.head.problem + ".");
        return false;
    }
    const std::string later = swiftpatch::HeaderValue(file.head.headers, "Retry-After");
    const bool limited = file.head.status == kTooManyRequests || file.head.status == kUnavailable;
    if (limited && !later.empty()) {
        findings.Warn("rate-limit", "The server wants to be asked again after " + later +
                                        ": each updater asks three times in a row, and many of "
                                        "them may share an address.");
    }
    if (file.head.status >= kFirstRefusal) {
        findings.Fault("refused", "The server answers HEAD with the status " +
                                      std::to_string(file.head.status) + ": it is not there.");
        return false;
    }
    if (file.head.redirected) {
        findings.Note("redirected", "The server redirects to " + file.head.address +
                                        ": each updater asks twice.");
    }
    return true;
}

void CheckCertificate(const Answer& head, Findings& findings) {
    if (!head.certificateDays) {
        return;
    }
    const std::string text = "The certificate of the server is good for " +
                             std::to_string(*head.certificateDays) + " more days";
    if (*head.certificateDays < kFewDays) {
        findings.Warn("certificate-ends", text + ": renew it in time, or no updater gets in.");
    } else {
        findings.Good("certificate", text + ".");
    }
}

/// Says whether the size can be read and is large enough.
bool CheckSize(const Answer& head, std::int32_t smallest, Findings& findings) {
    const std::string text = swiftpatch::HeaderValue(head.headers, "Content-length");
    const std::int32_t size = SizeIn(head);
    if (text.empty()) {
        findings.Fault("no-length",
                       "The answer to HEAD has no Content-length: the updater takes "
                       "it for a missing file.");
    } else if (size < 1) {
        findings.Fault("bad-length",
                       "The updater cannot read the Content-length \"" + text + "\" as a size.");
    } else if (size < smallest) {
        findings.Fault("too-small", "It has " + Count(size) +
                                        "; the updater takes anything below " + Count(smallest) +
                                        " for a bad link.");
    } else {
        findings.Good("large-enough", "It is there and has " + Count(size) + "; " +
                                          Count(smallest) + " are needed.");
        return true;
    }
    return false;
}

void CheckBody(const PublishedFile& file, Findings& findings) {
    const std::int32_t size = SizeIn(file.head);
    const auto came = static_cast<std::int64_t>(file.get.body.size());
    if (!file.get.answered || file.get.status >= kFirstRefusal) {
        findings.Fault("no-body", "GET is refused or not answered" +
                                      (file.get.problem.empty() ? "" : ": " + file.get.problem) +
                                      ".");
    } else if (!file.get.problem.empty()) {
        findings.Fault("broken-body", "The download broke off after " + Count(came) + ": " +
                                          file.get.problem + ".");
    } else if (!swiftpatch::HeaderValue(file.get.headers, "Content-encoding").empty()) {
        findings.Fault("encoded",
                       "GET sends the file compressed, which the updater does not undo.");
    } else if (size > 0 && came != size) {
        findings.Fault("other-length",
                       "HEAD says " + Count(size) + ", but GET brings " + Count(came) + ".");
    } else if (size > 0 && swiftpatch::HeaderValue(file.get.headers, "Content-length").empty()) {
        findings.Fault("no-length-of-body",
                       "HEAD says " + Count(size) +
                           ", but GET comes without a length: the updater would take a download "
                           "that is cut off for the whole.");
    } else {
        findings.Good("whole", "GET brings all of it.");
    }
}

/// True where both answers have the field, and not the same.
bool Differ(const Answer& one, const Answer& other, const char* field) {
    const std::string value = swiftpatch::HeaderValue(one.headers, field);
    const std::string second = swiftpatch::HeaderValue(other.headers, field);
    return !value.empty() && !second.empty() && value != second;
}

void CheckBodyToHead(const Answer& head, Findings& findings) {
    if (head.bodyToHead) {
        findings.Note("body-to-head",
                      "The server sends the file in answer to HEAD too: no updater minds, but each "
                      "run has up to three of these answers on its line.");
    }
}

void CheckCaches(const ServerState& state, Findings& findings) {
    const Answer& head = state.build.head;
    const Answer& origin = state.buildPastCaches;
    const bool comparable = origin.answered && origin.status == head.status;
    if (comparable &&
        (Differ(head, origin, "Last-modified") || Differ(head, origin, "Content-length"))) {
        findings.Warn("stale-cache",
                      "Something between here and the server still answers with another build. "
                      "Purge it, then give the build a new date (touch): who fetches the old one "
                      "meanwhile does not fetch the new one before that.");
    }
}

void CheckDate(const ServerState& state, DateTime now, Findings& findings) {
    const std::string text = swiftpatch::HeaderValue(state.build.head.headers, "Last-modified");
    const auto date = PublishedDate(state);
    if (text.empty()) {
        findings.Fault("no-date",
                       "The answer to HEAD has no Last-modified: updaters that have "
                       "fetched a build before never fetch this one. lighttpd needs a type for "
                       ".exe in mimetype.assign, the serve of npm the option --no-etag.");
    } else if (!date) {
        findings.Fault("bad-date", "The updater cannot read the Last-modified \"" + text +
                                       "\": updaters that have fetched a build before never "
                                       "fetch this one.");
    } else if (swiftpatch::MinutesBetween(now, *date) > 0) {
        findings.Fault("future-date", "Last-modified lies in the future (" + TextOf(*date) +
                                          "): until then every run fetches the build again.");
    } else {
        findings.Good("date", "Last-modified is read as " + TextOf(*date) +
                                  ". Updaters that fetched a build after that do not fetch this "
                                  "one.");
    }
}

void CheckVersion(const PublishedFile& build, Findings& findings) {
    if (IsCutOff(build.get.body)) {
        findings.Fault("cut-off", "It is shorter than its own headers say: the file was cut off.");
    }
    const auto versions = ReadFileVersions(build.get.body);
    if (!versions) {
        findings.Fault("no-version",
                       "It carries no version block: updaters take it for damaged "
                       "and delete it.");
        return;
    }
    findings.Good("version", "It carries the product version " + ShownText(versions->product) +
                                 " (file version " + ShownText(versions->file) + ").");
    if (HasNegativePart(versions->product)) {
        findings.Warn("negative-version",
                      "A part of its product version is above 32767, which "
                      "updaters read as a negative number.");
    }
}

void CheckBuild(const ServerState& state, DateTime now, std::vector<Finding>& list) {
    Findings findings(list, swiftpatch::kStagedBuild);
    if (!CheckAnswer(state.build, swiftpatch::kStagedBuild, findings)) {
        return;
    }
    CheckCertificate(state.build.head, findings);
    CheckSize(state.build.head, swiftpatch::kSmallestBuild, findings);
    CheckBody(state.build, findings);
    CheckDate(state, now, findings);
    CheckBodyToHead(state.build.head, findings);
    CheckCaches(state, findings);
    CheckVersion(state.build, findings);
}

void CheckLicence(const ServerState& state, std::vector<Finding>& list) {
    Findings findings(list, swiftpatch::kLicenceText);
    const std::int32_t size = SizeIn(state.build.head);
    if (size >= swiftpatch::kPlausibleBuild) {
        findings.Good("not-needed", "It is not needed: the build has " +
                                        Count(swiftpatch::kPlausibleBuild) + " or more.");
        return;
    }
    findings.Note("needed", "It is needed, since the build has less than " +
                                Count(swiftpatch::kPlausibleBuild) + ".");
    if (CheckAnswer(state.licence, swiftpatch::kLicenceText, findings)) {
        CheckSize(state.licence.head, swiftpatch::kPlausibleLicence, findings);
    }
}

void CheckAnimation(const ServerState& state, std::vector<Finding>& list) {
    Findings findings(list, swiftpatch::kBusyAnimation);
    if (!CheckAnswer(state.animation, swiftpatch::kBusyAnimation, findings)) {
        findings.Note("animation-needed",
                      "An updater that lacks this file ends its run without it.");
        return;
    }
    if (!CheckSize(state.animation.head, swiftpatch::kSmallestAnimation, findings)) {
        return;
    }
    const std::string reason = ReasonNotPlayable(state.animation.get.body);
    if (!state.animation.get.answered || !state.animation.get.problem.empty()) {
        findings.Warn("no-body", "GET does not bring all of it; the update goes on without.");
    } else if (!reason.empty()) {
        findings.Warn("not-playable",
                      "It cannot be played, since " + reason + "; the update goes on without.");
    } else {
        findings.Good("playable", "It can be played.");
    }
}

}  // namespace

std::vector<Finding> FolderFindings(const ServerState& state, DateTime now,
                                    const std::optional<std::string>& keys) {
    std::vector<Finding> list;
    CheckBuild(state, now, list);
    if (keys) {
        CheckSignature(state, *keys, list);
    }
    CheckLicence(state, list);
    if (keys) {
        Findings(list, swiftpatch::kBusyAnimation)
            .Good("not-fetched",
                  "It is not needed: updaters whose builds have to be signed do not fetch what "
                  "nobody has signed.");
    } else {
        CheckAnimation(state, list);
    }
    return list;
}

void WarnOfOtherCase(const PublishedFile& file, const std::string& name, Findings& findings) {
    if (!file.nearlyNamed.empty()) {
        findings.Warn("other-case", "The folder holds \"" + file.nearlyNamed +
                                        "\"; most servers "
                                        "take that for another name than \"" +
                                        name + "\".");
    }
}

std::optional<DateTime> PublishedDate(const ServerState& state) {
    const std::string text = swiftpatch::HeaderValue(state.build.head.headers, "Last-modified");
    try {
        const std::string date = swiftpatch::DateFromHeader(text);
        // The reader hands out a date of its own where it cannot read one.
        const bool own = text.find(date) == std::string::npos;
        return own ? std::nullopt : swiftpatch::ParseDateTime(date);
    } catch (const swiftpatch::RuntimeError&) {
        return std::nullopt;
    }
}

}  // namespace publish_check
