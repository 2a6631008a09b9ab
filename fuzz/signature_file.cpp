#include "signing/signature_file.h"

#include <algorithm>
#include <string>
#include <vector>

#include "property.h"
#include "signing/signing_keys.h"
#include "support/minisign_signer.h"

namespace swiftpatch::fuzz {
namespace {

constexpr std::string_view kFileName = "tolvex30.exe";

/// A maker with two keys, and what was signed with them.
struct Maker {
    const MinisignSigner work{"work"};
    const MinisignSigner spare{"spare"};
    const std::vector<SigningKey> keys = {work.PublicKey(), spare.PublicKey()};
    const Blake2b::Digest hash = HashOfBuild("the build");
    const std::vector<SignatureBlock> ofTheBuild =
        ParseSignatureFile(work.SignBuild(hash, TrustedCommentFor(kFileName)) +
                           spare.SignBuild(hash, TrustedCommentFor(kFileName)));
};

bool IsOneOf(const SignatureBlock& block, const std::vector<SignatureBlock>& known) {
    return std::ranges::any_of(known, [&block](const SignatureBlock& other) {
        return block.number == other.number && block.first == other.first &&
               block.trustedComment == other.trustedComment && block.second == other.second;
    });
}

void Judge(std::string_view file) {
    static const Maker maker;
    const std::vector<SignatureBlock> blocks = ParseSignatureFile(file);
    const SignatureVerdict verdict = JudgeSignature(blocks, maker.keys, maker.hash, kFileName);
    Always(blocks.size() <= kMostSignatureBlocks, "no more blocks are looked at than allowed");
    Always(blocks.empty() == (verdict == SignatureVerdict::kUnreadable),
           "a file is unreadable when it has no whole block");
    Always(HasBlockOf(blocks, maker.keys) == (verdict > SignatureVerdict::kOfAnotherKey),
           "what is not ours before the download is not ours after it");
    Always(verdict != SignatureVerdict::kSigned ||
               std::ranges::any_of(
                   blocks,
                   [](const SignatureBlock& block) { return IsOneOf(block, maker.ofTheBuild); }),
           "only what the maker has signed is signed, with the comment that was signed");
}

void ReadKeys(std::string_view text) {
    constexpr std::size_t kKeyAndBlank = 57;
    const auto keys = ParseSigningKeys(text);
    Always(!keys || (!keys->empty() && keys->size() <= kMostSigningKeys &&
                     text.size() == keys->size() * kKeyAndBlank - 1),
           "keys are one to four, and nothing besides");
}

}  // namespace
}  // namespace swiftpatch::fuzz

/// A signature file that somebody put beside the build, and the same as a list of keys.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input = swiftpatch::fuzz::TextOf(data, size);
    swiftpatch::fuzz::Judge(input);
    swiftpatch::fuzz::ReadKeys(input);
    return 0;
}
