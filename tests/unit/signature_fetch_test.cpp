#include "runtime/runtime_error.h"
#include "unit/signed_builds_support.h"

namespace swiftpatch {
namespace {

class SignatureFetch : public SignedTest {
protected:
    SignatureFetch() {
        world.user.onAnyBox = [](const std::string&, int, const std::string&) {
            return MsgBoxAnswer::kOk;
        };
    }

    /// A connection that is lost is never taken for a missing signature.
    void ExpectLost(const headless::Reply& reply, const std::string& requests) {
        world.network.AnswerNext(Get(kSignature), reply);
        ExpectReport("Internet Connection Timeout", BrokenTransfer("35758\r\nRequest timed out"));
        RunCheck();
        EXPECT_EQ(RequestsAfterProbes(), requests);
        EXPECT_TRUE(Window().cmdRetry.Visible);
        EXPECT_TRUE(Window().cmdClose.Enabled);
        EXPECT_FALSE(Window().cmdInstall.Enabled);
        EXPECT_EQ(Window().downloadMode, DownloadMode::kNone);
    }

    void ExpectRetryToOffer() {
        world.Click(Window(), Window().cmdRetry);
        world.PumpFor(60000);
        EXPECT_TRUE(Window().cmdInstall.Enabled);
        EXPECT_TRUE(Content("tolvex30.exe") == newBuild);
    }
};

TEST_F(SignatureFetch, ConnectionLostBeforeTheAnswerIsATimeoutWithRetry) {
    headless::Reply lost;
    lost.failure = error_number::kRequestFailed;
    ExpectLost(Quiet(lost), "GET tolvex30.exe.minisig");
    ExpectRetryToOffer();
}

TEST_F(SignatureFetch, SilentServerIsATimeoutWithRetry) {
    ExpectLost(SilentReply(), "GET tolvex30.exe.minisig");
    ExpectRetryToOffer();
}

TEST_F(SignatureFetch, ConnectionLostInTheFileIsATimeoutWithRetry) {
    headless::Reply cut = headless::FileReply(Signature(newBuild));
    cut.breakAfter = 100;
    ExpectLost(Quiet(cut), "GET tolvex30.exe.minisig");
    ExpectRetryToOffer();
}

TEST_F(SignatureFetch, FileThatStopsComingInIsATimeoutWithRetry) {
    headless::Reply stalled = headless::FileReply(Signature(newBuild));
    stalled.stallAfter = 100;
    ExpectLost(Quiet(stalled), "GET tolvex30.exe.minisig");
    ExpectRetryToOffer();
}

TEST_F(SignatureFetch, StagedBuildStaysWhenTheConnectionIsLost) {
    world.AddFile("tolvex30.exe", newBuild, AddMinutes(serverTime, 60));
    ExpectLost(SilentReply(), "GET tolvex30.exe.minisig");
    EXPECT_TRUE(Content("tolvex30.exe") == newBuild);
}

TEST_F(SignatureFetch, ConnectionLostAtTheSecondLookOffersNothing) {
    PublishSignatureOnce(Signature(oldBuild));
    ExpectLost(SilentReply(),
               "GET tolvex30.exe.minisig, GET tolvex30.exe, GET tolvex30.exe.minisig");
    ExpectRetryToOffer();
}

TEST_F(SignatureFetch, FileInSmallBlocksIsReadToItsEnd) {
    headless::Reply slow = headless::FileReply(Signature(newBuild));
    slow.blockSize = 1;
    world.network.Answer(Get(kSignature), slow);
    ExpectOffered(newBuild);
}

TEST_F(SignatureFetch, ClosedMeanwhileEndsTheRun) {
    world.network.Answer(Get(kSignature), SilentReply());
    world.user.Answer("No version information");
    world.When([this] { return Requested(Get(kSignature)); }, [this] { world.Close(Window()); });
    world.user.Answer("Are you sure you want to exit", MsgBoxAnswer::kYes);
    RunCheck();
    EXPECT_TRUE(world.RunOver());
}

}  // namespace
}  // namespace swiftpatch
