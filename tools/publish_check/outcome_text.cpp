#include "publish_check/outcome_text.h"

#include "shared/paths.h"

namespace publish_check {
namespace {

constexpr std::size_t kComparedParts = 3;

std::string LastFailure(const FieldRun& run) {
    return run.failures.empty() ? "" : " It shows \"" + run.failures.back().first + "\".";
}

bool Fetched(const FieldRun& run) {
    return run.Asked(std::string("GET ") + swiftpatch::kStagedBuild);
}

std::string OfferSentence(const FieldRun& run, const std::string& offered) {
    return (Fetched(run) ? "It fetches " : "It finds that it has fetched ") + offered +
           " and offers to install it.";
}

std::string BrokenSentence(const FieldRun& run) {
    const bool amidSignature =
        !Fetched(run) && run.Asked(std::string("GET ") + swiftpatch::kBuildSignature);
    return (amidSignature ? "It does not get all of the signature, and stops."
                          : "Its download breaks off.") +
           LastFailure(run);
}

}  // namespace

std::string Sentence(const FieldRun& run, const std::string& installed,
                     const std::optional<FileVersions>& offered) {
    const std::string build = offered ? ShownText(offered->product) : swiftpatch::kStagedBuild;
    switch (run.outcome) {
        case Outcome::kOffered:
            return OfferSentence(run, build);
        case Outcome::kLatest:
            if (run.Asked(std::string("GET ") + swiftpatch::kStagedBuild)) {
                return "It fetches " + build + ", finds that it is older than " + installed +
                       ", which signed builds never go back from, and says that it is running the "
                       "latest version.";
            }
            return "It says that it is running the latest version, since it has fetched a build of "
                   "the same version that is not older than the one on the server.";
        case Outcome::kNothingNewer:
            return "It fetches " + build + ", finds that it is no newer than " + installed +
                   ", and says that no update is required.";
        case Outcome::kNoConnection:
            return std::string("It takes the server for unreachable: neither the build nor ") +
                   swiftpatch::kLicenceText + " is large enough." + LastFailure(run);
        case Outcome::kBadLink:
            return "It takes the build for missing, by its size." + LastFailure(run);
        case Outcome::kBadAnimationLink:
            return std::string("It needs ") + swiftpatch::kBusyAnimation +
                   ", does not get it from the server, and stops." + LastFailure(run);
        case Outcome::kBrokenDownload:
            return BrokenSentence(run);
        case Outcome::kNoVersion:
            return "It fetches the build but cannot compare its version, and stops." +
                   LastFailure(run);
        case Outcome::kNoProgram:
            return std::string("It fetches ") + build + " but finds no " +
                   swiftpatch::kMainProgram + " to compare it with, and stops." + LastFailure(run);
        case Outcome::kSignatureMissing:
            return "It finds no signature by one of its keys, and does not fetch the build." +
                   LastFailure(run);
        case Outcome::kSignatureInvalid:
            return "It fetches " + build +
                   ", finds that none of its keys has signed it, and "
                   "deletes it." +
                   LastFailure(run);
        case Outcome::kSigningKeyInvalid:
            return "It cannot read its signing keys, and refuses every update." + LastFailure(run);
        default:
            return "Its run ends without an update." + LastFailure(run);
    }
}

std::string ReasonHidden(const Version& installed, const Version& offered) {
    constexpr const char* kNames[]{"major", "minor", "build"};
    for (std::size_t i = 1; i < kComparedParts; ++i) {
        if (installed[i] > offered[i]) {
            return std::string(
                       "WARNING: the published build is newer, but updaters compare part "
                       "by part, and the installed ") +
                   kNames[i] + " part " + std::to_string(installed[i]) + " is above " +
                   std::to_string(offered[i]) + ".";
        }
    }
    return "WARNING: the published build is newer, but not in the first three parts of its "
           "version, which are all that updaters compare.";
}

}  // namespace publish_check
