#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "minisign_program.h"
#include "random_bytes.h"
#include "signing/signature_file.h"
#include "signing/signing_keys.h"
#include "support/byte_text.h"
#include "support/minisign_signer.h"

namespace swiftpatch {
namespace {

constexpr int kKeys = 30;
constexpr int kChangesOfEach = 20;
constexpr const char* kFileName = "tolvex30.exe";

struct SignedBuild {
    std::string publicKey;
    std::string content;
    std::string signatureFile;
};

std::string RandomBuild(RandomBytes& random) {
    const std::vector<std::uint8_t> bytes = random.Bytes(random.Below(5000));
    return {bytes.begin(), bytes.end()};
}

SignatureVerdict OurVerdict(const SignedBuild& build) {
    return JudgeSignature(ParseSignatureFile(build.signatureFile),
                          ParseSigningKeys(build.publicKey).value(), HashOfBuild(build.content),
                          kFileName);
}

/// minisign does not ask for the name of the file in the comment.
bool WeAccept(const SignedBuild& build) {
    return OurVerdict(build) >= SignatureVerdict::kOfAnotherFile;
}

bool MinisignAccepts(const MinisignProgram& minisign, const SignedBuild& build) {
    return minisign.Verify(build.publicKey, kFileName, build.content, build.signatureFile);
}

/// Where a change would be judged differently on purpose: the last letter of a line in base64 has
/// bits that stand for nothing, which minisign lets be anything.
bool IsReadLeniently(const std::string& file, std::size_t at) {
    return file.substr(at + 1).starts_with('=');
}

/// One change somewhere in the file, which may or may not matter.
std::string Changed(std::string file, RandomBytes& random) {
    constexpr std::string_view kLetters = "ABCxyz019+/= :\t\n";
    std::size_t at = random.Below(file.size());
    while (IsReadLeniently(file, at)) {
        at = random.Below(file.size());
    }
    const char letter = kLetters[random.Below(kLetters.size())];
    switch (random.Below(6)) {
        case 0:
            return file.substr(0, at);
        case 1:
            return file.erase(at, 1);
        case 2:
            return file.insert(at, 1, letter);
        case 3:
            return file + letter;
        case 4:
            file[at] = letter;
            return file;
        default:
            // Never the bit that makes a blank a zero byte, which ends a line for minisign.
            FlipBit(file, at * 8 + random.Below(5));
            return file;
    }
}

class SignatureFileDifferential : public testing::Test {
protected:
    /// What a key that was just made signs, with minisign's own comment or another one.
    SignedBuild NewSignedBuild(bool ownComment) {
        const std::string name = "key" + std::to_string(++keys_);
        SignedBuild build{minisign.MakeKey(name), RandomBuild(random), ""};
        build.signatureFile =
            minisign.Sign(name, kFileName, build.content, ownComment ? "" : "a release of ours");
        return build;
    }

    MinisignProgram minisign;
    RandomBytes random{6};

private:
    int keys_ = 0;
};

TEST_F(SignatureFileDifferential, AgreesWithMinisignOnWhatItSigns) {
    for (int i = 0; i < kKeys; ++i) {
        const bool ownComment = i % 2 == 0;
        SignedBuild build = NewSignedBuild(ownComment);
        EXPECT_TRUE(MinisignAccepts(minisign, build));
        EXPECT_EQ(OurVerdict(build),
                  ownComment ? SignatureVerdict::kSigned : SignatureVerdict::kOfAnotherFile);
        build.content += 'x';
        EXPECT_FALSE(MinisignAccepts(minisign, build));
        EXPECT_EQ(OurVerdict(build), SignatureVerdict::kOfAnotherBuild);
    }
}

TEST_F(SignatureFileDifferential, AgreesWithMinisignOnWhatTheSignerOfTheTestsSigns) {
    for (int i = 0; i < kKeys; ++i) {
        const MinisignSigner signer(random.Seed());
        const std::string content = RandomBuild(random);
        const SignedBuild build{
            signer.PublicKeyText(), content,
            signer.SignBuild(HashOfBuild(content), TrustedCommentFor(kFileName))};
        EXPECT_TRUE(MinisignAccepts(minisign, build)) << build.signatureFile;
        EXPECT_EQ(OurVerdict(build), SignatureVerdict::kSigned) << build.signatureFile;
    }
}

TEST_F(SignatureFileDifferential, AgreesWithMinisignOnAnotherKey) {
    SignedBuild before = NewSignedBuild(true);
    for (int i = 0; i < kKeys; ++i) {
        const SignedBuild build = NewSignedBuild(true);
        before.publicKey = build.publicKey;
        EXPECT_FALSE(MinisignAccepts(minisign, before));
        EXPECT_EQ(OurVerdict(before), SignatureVerdict::kOfAnotherKey);
        before = build;
    }
}

TEST_F(SignatureFileDifferential, AgreesWithMinisignOnChangedFiles) {
    int accepted = 0;
    for (int i = 0; i < kKeys; ++i) {
        const SignedBuild unchanged = NewSignedBuild(i % 2 == 0);
        for (int change = 0; change < kChangesOfEach; ++change) {
            SignedBuild build = unchanged;
            build.signatureFile = Changed(unchanged.signatureFile, random);
            const bool ours = WeAccept(build);
            EXPECT_EQ(ours, MinisignAccepts(minisign, build))
                << build.publicKey << '\n'
                << unchanged.signatureFile << "became\n"
                << build.signatureFile;
            accepted += ours ? 1 : 0;
        }
    }
    EXPECT_GT(accepted, 0) << "no change was one that does not matter";
}

}  // namespace
}  // namespace swiftpatch
