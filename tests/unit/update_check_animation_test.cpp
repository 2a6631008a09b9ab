#include "runtime/runtime_error.h"
#include "unit/check_support.h"

namespace swiftpatch {
namespace {

constexpr std::size_t kAnimationSize = 1636;

class UpdateCheckMissingAnimation : public CheckTest {
protected:
    UpdateCheckMissingAnimation() {
        world.disk.Remove(world.PathOf("filecopy.avi"));
        Offer(250000);
        Stage("3.0.11.0", 250000, serverTime);
        PublishAnimation(LengthReply(std::to_string(kAnimationSize)),
                         Quiet(headless::FileReply(animation)));
    }

    void PublishAnimation(const headless::Reply& head, const headless::Reply& get) {
        world.network.Answer(Head(kAnimation), head);
        world.network.Answer(Get(kAnimation), get);
    }

    void ExpectTheLatestVersion() {
        EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(),
                  "You are running the latest version of q-tolvex");
        EXPECT_FALSE(Window().cmdRetry.Visible);
        EXPECT_FALSE(Window().tmrCheckVersion.Enabled);
        EXPECT_TRUE(Window().cmdClose.Enabled);
    }

    const std::string animation = std::string(kAnimationSize, 'a');
};

TEST_F(UpdateCheckMissingAnimation, IsFetchedBeforeTheBuildIsProbed) {
    RunCheck();
    EXPECT_EQ(Joined(world.network.Requests()),
              Joined({"HEAD http://tolvex.example/files/tolvex30.exe",
                      "HEAD http://tolvex.example/files/filecopy.avi",
                      "GET http://tolvex.example/files/filecopy.avi",
                      "HEAD http://tolvex.example/files/tolvex30.exe",
                      "HEAD http://tolvex.example/files/tolvex30.exe"}));
    EXPECT_EQ(Content("filecopy.avi"), animation);
    ExpectTheLatestVersion();
}

TEST_F(UpdateCheckMissingAnimation, IsAnnouncedBeforeItIsRequested) {
    RunCheck();
    const std::vector<std::string> steps =
        StepsFrom("Request HEAD http://tolvex.example/files/filecopy.avi");
    EXPECT_TRUE(Joined(steps).starts_with(
        Joined({"Request HEAD http://tolvex.example/files/filecopy.avi",
                Set("lblAnimationMsg.Caption", "Downloading\r\nmissing AVI file."),
                Set("lblStatus.Caption", "0 % download completed"),
                "Request GET http://tolvex.example/files/filecopy.avi", "cmdClose.Enabled = False",
                Set("lblAnimationMsg.Caption", "downloading ....\r\nmissing AVI file."),
                "Open C:\\Tolvex\\filecopy.avi #1"})))
        << Joined(steps);
}

TEST_F(UpdateCheckMissingAnimation, IsInBeforeAnythingElseIsRequested) {
    headless::Reply slow = Quiet(headless::FileReply(animation));
    slow.blockSize = 100;
    PublishAnimation(LengthReply(std::to_string(kAnimationSize)), slow);
    RunCheck();
    EXPECT_TRUE(InOrder(StepsFrom("Request GET http://tolvex.example/files/filecopy.avi"),
                        {"Close #1", "tmrCheckVersion.Enabled = False", "cmdClose.Enabled = True",
                         "Request HEAD http://tolvex.example/files/tolvex30.exe"}));
    EXPECT_EQ(Content("filecopy.avi"), animation);
}

TEST_F(UpdateCheckMissingAnimation, OfUnder1636BytesOnTheServerIsAnIncorrectLink) {
    PublishAnimation(LengthReply("1635"), {});
    ExpectReport("Incorrect Download Link",
                 "The download link your are requesting is invalid.\r\n"
                 "The link: tolvex.example/files/filecopy.avi is not available.");
    RunCheck();
    EXPECT_EQ(world.network.Requests().size(), 2U);
    EXPECT_EQ(world.disk.Names().size(), 2U);
}

TEST_F(UpdateCheckMissingAnimation, OfUnknownSizeIsAnIncorrectLink) {
    PublishAnimation(Quiet(headless::HeaderReply("")), {});
    ExpectReport("Incorrect Download Link",
                 "The download link your are requesting is invalid.\r\n"
                 "The link: tolvex.example/files/filecopy.avi is not available.");
    RunCheck();
    EXPECT_EQ(Window().Pointer.Get(), MousePointer::kDefault);
}

TEST_F(UpdateCheckMissingAnimation, IsNotFetchedWhenItIsThere) {
    world.AddFile("filecopy.avi", "");
    RunCheck();
    EXPECT_EQ(world.network.Requests().size(), 3U);
    ExpectTheLatestVersion();
}

TEST_F(UpdateCheckMissingAnimation, ThatBreaksOffIsReportedAndTheCheckGoesOn) {
    headless::Reply broken = Quiet(headless::FileReply(animation));
    broken.breakAfter = 1024;
    PublishAnimation(LengthReply(std::to_string(kAnimationSize)), broken);
    ExpectReport("Internet Connection Timeout", BrokenTransfer("35758\r\nRequest timed out"));
    RunCheck();
    EXPECT_EQ(world.network.Requests().size(), 5U);
    ExpectTheLatestVersion();
}

TEST_F(UpdateCheckMissingAnimation, ThatStallsIsReportedAndTheCheckGoesOn) {
    headless::Reply stalled = Quiet(headless::FileReply(animation));
    stalled.stallAfter = 1024;
    PublishAnimation(LengthReply(std::to_string(kAnimationSize)), stalled);
    ExpectReport("Internet Connection Timeout", BrokenTransfer("35758\r\nRequest timed out"));
    RunCheck();
    EXPECT_EQ(world.network.Requests().size(), 5U);
    ExpectTheLatestVersion();
}

TEST_F(UpdateCheckMissingAnimation, ThatTheServerRefusesDoesNotStopTheCheck) {
    headless::Reply refused;
    refused.failure = error_number::kNoConnection;
    PublishAnimation(LengthReply(std::to_string(kAnimationSize)), refused);
    RunCheck();
    EXPECT_EQ(world.network.Requests().size(), 5U);
    ExpectTheLatestVersion();
}

TEST_F(UpdateCheckMissingAnimation, ThatTheServerNeverSendsDoesNotStopTheCheck) {
    PublishAnimation(LengthReply(std::to_string(kAnimationSize)), SilentReply());
    RunCheck();
    EXPECT_EQ(world.network.Requests().size(), 5U);
    ExpectTheLatestVersion();
}

TEST_F(UpdateCheckMissingAnimation, ThatCannotBeWrittenIsReportedAndTheCheckGoesOn) {
    world.disk.Fail("Put", error_number::kDiskFull);
    ExpectReport("Internet Connection Timeout", BrokenTransfer("61\r\nDisk full"));
    RunCheck();
    ExpectTheLatestVersion();
}

TEST_F(UpdateCheckMissingAnimation, IsFollowedByTheDownloadOfTheBuild) {
    const std::string build = headless::Build("3.0.12.5", 250000);
    world.disk.Remove(world.PathOf("tolvex30.exe"));
    Publish(build);
    world.user.Answer("The file does not exist.");
    RunCheck();
    EXPECT_EQ(Content("tolvex30.exe"), build);
    EXPECT_EQ(Content("filecopy.avi"), animation);
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "Click on Install Button.");
}

}  // namespace
}  // namespace swiftpatch
