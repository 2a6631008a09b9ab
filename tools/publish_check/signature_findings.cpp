#include "publish_check/signature_findings.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "publish_check/folder_findings.h"
#include "shared/paths.h"
#include "signing/signature_file.h"
#include "signing/signing_keys.h"

namespace publish_check {
namespace {

using swiftpatch::SignatureBlock;
using swiftpatch::SignatureVerdict;
using swiftpatch::SigningKey;
using swiftpatch::SigningKeyNumber;

constexpr int kOk = 200;
constexpr int kFirstRefusal = 400;

/// As minisign writes it: its bytes from the last to the first.
std::string NumberText(const SigningKeyNumber& number) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (auto byte = number.rbegin(); byte != number.rend(); ++byte) {
        text += kDigits[*byte >> 4U];
        text += kDigits[*byte & 15U];
    }
    return text;
}

/// The numbers of what has one each, with commas between them.
template <typename Items>
std::string Numbers(const Items& items) {
    std::string text;
    for (const auto& item : items) {
        text += (text.empty() ? "" : ", ") + NumberText(item.number);
    }
    return text;
}

/// Says whether the file came; false when there is nothing more to say about it.
bool CheckArrival(const PublishedFile& file, Findings& findings) {
    WarnOfOtherCase(file, swiftpatch::kBuildSignature, findings);
    const std::size_t size = file.get.body.size();
    if (!file.get.answered) {
        findings.Fault("no-answer", "GET is not answered: " + file.get.problem + ".");
    } else if (file.get.status != kOk) {
        findings.Fault("missing", "GET is answered with the status " +
                                      std::to_string(file.get.status) +
                                      ": the build is not signed, and is not fetched.");
    } else if (!file.get.problem.empty()) {
        findings.Fault("broken-body", "The download broke off after " + std::to_string(size) +
                                          " bytes: " + file.get.problem + ".");
    } else if (size > swiftpatch::kLongestSignatureFile) {
        findings.Fault("unreadable", "It has " + std::to_string(size) +
                                         " bytes; updaters take more than " +
                                         std::to_string(swiftpatch::kLongestSignatureFile) +
                                         " for no signature.");
    } else {
        return true;
    }
    return false;
}

/// How the maker's keys, the signatures and the build stand to each other.
class Comparison {
public:
    Comparison(const std::vector<SigningKey>& keys, const ServerState& state)
        : keys_(keys),
          blocks_(swiftpatch::ParseSignatureFile(state.signature.get.body)),
          hash_(HashOfBuild(state.build.get.body)) {}

    void Report(Findings& findings) const {
        if (Judge(keys_) == SignatureVerdict::kSigned) {
            ReportSigned(findings);
        } else {
            ReportFault(Judge(keys_), findings);
        }
    }

private:
    SignatureVerdict Judge(std::span<const SigningKey> keys) const {
        return swiftpatch::JudgeSignature(blocks_, keys, hash_, swiftpatch::kStagedBuild);
    }

    void ReportSigned(Findings& findings) const;
    void ReportFault(SignatureVerdict verdict, Findings& findings) const;

    const std::vector<SigningKey>& keys_;
    std::vector<SignatureBlock> blocks_;
    swiftpatch::Blake2b::Digest hash_;
};

void Comparison::ReportSigned(Findings& findings) const {
    std::vector<SigningKey> signers;
    std::vector<SigningKey> others;
    std::partition_copy(keys_.begin(), keys_.end(), std::back_inserter(signers),
                        std::back_inserter(others), [this](const SigningKey& key) {
                            return Judge({&key, 1}) == SignatureVerdict::kSigned;
                        });
    findings.Good("signed", keys_.size() == 1
                                ? "The key " + Numbers(signers) + " has signed this build."
                                : "This build is signed with " + std::to_string(signers.size()) +
                                      " of the " + std::to_string(keys_.size()) +
                                      " keys: " + Numbers(signers) + ".");
    for (const SigningKey& key : others) {
        findings.Note("not-by-key",
                      "The key " + NumberText(key.number) +
                          " has not signed this build: updaters that know no other refuse it. Of a "
                          "spare key that is as it should be; before a change of keys sign with "
                          "both.");
    }
}

void Comparison::ReportFault(SignatureVerdict verdict, Findings& findings) const {
    switch (verdict) {
        case SignatureVerdict::kOfAnotherKey:
            findings.Fault("other-key", "It is signed with another key (" + Numbers(blocks_) +
                                            ") than " + Numbers(keys_) +
                                            ": the build is not fetched.");
            break;
        case SignatureVerdict::kOfAnotherBuild:
            findings.Fault("other-build",
                           "It is the signature of another build than the one that is there.");
            break;
        case SignatureVerdict::kForgedComment:
            findings.Fault("forged-comment",
                           "Its trusted comment is not the one that was signed: somebody has "
                           "changed it.");
            break;
        case SignatureVerdict::kOfAnotherFile:
            findings.Fault("other-file", std::string("Its trusted comment does not say \"file:") +
                                             swiftpatch::kStagedBuild +
                                             "\": sign the build under that name, and without -t.");
            break;
        default:
            findings.Fault("unreadable",
                           "There is no whole signature in it: four lines as minisign -S writes "
                           "them, and not in its old form (-l).");
            break;
    }
}

}  // namespace

swiftpatch::Blake2b::Digest HashOfBuild(std::string_view build) {
    swiftpatch::Blake2b hash;
    hash.Update({reinterpret_cast<const std::uint8_t*>(build.data()), build.size()});
    return hash.Finish();
}

void CheckSignature(const ServerState& state, const std::string& keys, std::vector<Finding>& list) {
    Findings findings(list, swiftpatch::kBuildSignature);
    const auto parsed = swiftpatch::ParseSigningKeys(keys);
    if (!parsed) {
        findings.Fault("signing-key-invalid",
                       "The signing keys cannot be read: an updater with them refuses every "
                       "update.");
        return;
    }
    if (!CheckArrival(state.signature, findings)) {
        return;
    }
    const Answer& build = state.build.get;
    if (!build.answered || build.status >= kFirstRefusal || !build.problem.empty()) {
        findings.Note("not-compared", "It cannot be held against the build, which did not come.");
        return;
    }
    Comparison(*parsed, state).Report(findings);
}

}  // namespace publish_check
