#include "unit/signed_builds_support.h"

#include "shared/shared_state.h"

namespace swiftpatch {

std::string SignatureBy(const MinisignSigner& signer, const std::string& build,
                        const std::string& fileName) {
    return signer.SignBuild(HashOfBuild(build), TrustedCommentFor(fileName));
}

std::string NewBuild() { return headless::Build("3.0.12.5", 250000); }

SignedTest::SignedTest() {
    shared.SigningKeys = maker.PublicKeyText();
    PublishSigned(newBuild);
}

void SignedTest::PublishSignature(const std::string& file) {
    world.network.Answer(Get(kSignature), Quiet(headless::FileReply(file)));
}

void SignedTest::PublishSignatureOnce(const std::string& file) {
    world.network.AnswerNext(Get(kSignature), Quiet(headless::FileReply(file)));
}

void SignedTest::PublishSigned(const std::string& build) {
    Publish(build);
    PublishSignature(Signature(build));
}

void SignedTest::ExpectRefused(const std::string& title, const std::string& text) {
    ExpectReport(title, text);
    world.user.onAnyBox = [](const std::string& box, int, const std::string&) {
        EXPECT_TRUE(box.find("No version information") != std::string::npos) << box;
        return MsgBoxAnswer::kOk;
    };
    RunCheck();
    ExpectNothingChanged();
    EXPECT_EQ(Content("tolvex30.exe"), "(no such file)");
}

void SignedTest::ExpectNothingChanged() {
    EXPECT_EQ(Content("tolvex.exe"), oldBuild);
    EXPECT_FALSE(Window().cmdInstall.Visible);
    EXPECT_TRUE(Window().cmdClose.Enabled);
    EXPECT_TRUE(Window().chkRunTolvex.Value == CheckState::kUnchecked);
    EXPECT_TRUE(world.trace.StartingWith("FileCopy").empty());
}

std::string SignedTest::RequestsAfterProbes() const {
    constexpr std::size_t kProbes = 3;
    const std::string folder = kFolder;
    std::string requests;
    std::size_t count = 0;
    for (std::string request : world.network.Requests()) {
        if (++count > kProbes) {
            request.erase(request.find(folder), folder.size());
            requests += (requests.empty() ? "" : ", ") + request;
        }
    }
    return requests;
}

void SignedTest::ExpectOffered(const std::string& build) {
    world.user.onAnyBox = [](const std::string& box, int, const std::string&) {
        EXPECT_TRUE(box.find("No version information") != std::string::npos) << box;
        return MsgBoxAnswer::kOk;
    };
    RunCheck();
    EXPECT_TRUE(Window().cmdInstall.Visible);
    EXPECT_TRUE(Content("tolvex30.exe") == build);
}

}  // namespace swiftpatch
