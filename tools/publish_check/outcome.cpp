#include "publish_check/outcome.h"

#include <map>

#include "mainwindow/frmSwiftPatch.h"
#include "runtime/runtime_error.h"
#include "shared/paths.h"

namespace publish_check {
namespace {

/// By the failure that was shown last.
Outcome OutcomeOfFailure(const std::string& title, const std::string& text) {
    static const std::map<std::string, Outcome> kOutcomes{
        {"No Connection", Outcome::kNoConnection},
        {"Bad Download Link", Outcome::kBadLink},
        {"Incorrect Download Link", Outcome::kBadAnimationLink},
        {"Program File Not Found", Outcome::kNoProgram},
        {"Internet Connection Timeout", Outcome::kNoVersion},
        {"Signature Missing", Outcome::kSignatureMissing},
        {"Signature Invalid", Outcome::kSignatureInvalid},
        {"Signing Key Invalid", Outcome::kSigningKeyInvalid},
    };
    const std::string timedOut = std::to_string(swiftpatch::error_number::kRequestTimedOut);
    if (text.find(timedOut) != std::string::npos) {
        return Outcome::kBrokenDownload;
    }
    const auto found = kOutcomes.find(title);
    return found == kOutcomes.end() ? Outcome::kFailed : found->second;
}

}  // namespace

Outcome OutcomeOf(const swiftpatch::frmSwiftPatch& window, const FieldRun& run) {
    if (window.cmdInstall.Visible && window.cmdInstall.Enabled) {
        return Outcome::kOffered;
    }
    if (!window.fraMessages.Visible) {
        return Outcome::kNothingNewer;
    }
    // A failed animation is shown as well, but the check goes on after it.
    if (run.message.starts_with("You are running the latest version")) {
        return Outcome::kLatest;
    }
    return run.failures.empty()
               ? Outcome::kFailed
               : OutcomeOfFailure(run.failures.back().first, run.failures.back().second);
}

const char* NameOf(Outcome outcome) {
    switch (outcome) {
        case Outcome::kOffered:
            return "offered";
        case Outcome::kLatest:
            return "latest";
        case Outcome::kNothingNewer:
            return "nothing-newer";
        case Outcome::kNoConnection:
            return "no-connection";
        case Outcome::kBadLink:
            return "bad-link";
        case Outcome::kBadAnimationLink:
            return "bad-animation-link";
        case Outcome::kBrokenDownload:
            return "broken-download";
        case Outcome::kNoVersion:
            return "no-version";
        case Outcome::kNoProgram:
            return "no-program";
        case Outcome::kSignatureMissing:
            return "signature-missing";
        case Outcome::kSignatureInvalid:
            return "signature-invalid";
        case Outcome::kSigningKeyInvalid:
            return "signing-key-invalid";
        default:
            return "failed";
    }
}

}  // namespace publish_check
