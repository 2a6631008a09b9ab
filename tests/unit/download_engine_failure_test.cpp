#include "runtime/files.h"
#include "runtime/runtime_error.h"
#include "unit/download_engine_support.h"

namespace swiftpatch {
namespace {

constexpr const char* kTimeout = "Internet Connection Timeout";

class DownloadEngineFailure : public EngineTest {
protected:
    DownloadEngineFailure() { InstallSameVersion(); }

    void ExpectFailedDeletion(const std::string& text) {
        EXPECT_TRUE(
            Joined(StepsFrom("cmdClose.Enabled = False"))
                .ends_with(Joined({"Kill C:\\Tolvex\\tolvex30.exe", Box(text), AnimationStopped(),
                                   Set("lblStatus.Caption", "Download Failed."),
                                   "cmdClose.Enabled = True", "frmSwiftPatch.MousePointer = 0"})))
            << Joined(Steps());
    }
};

TEST_F(DownloadEngineFailure, OfAHeldStagedBuildSaysThatItRuns) {
    world.AddFile("tolvex30.exe", "old").held = true;
    world.user.Answer("is probably running");
    DownloadBuild(2048, NewBuild(2048));
    ExpectFailedDeletion(
        "Error: 75\r\nPath/File access error\r\n\r\ntolvex30.exe is probably running.");
    EXPECT_EQ(Content("tolvex30.exe"), "old");
}

TEST_F(DownloadEngineFailure, OfAHeldStagedBuildCancelsTheTransferBeforeItSaysSo) {
    world.AddFile("tolvex30.exe", "old").held = true;
    std::size_t before = 0;
    world.user.Answer("is probably running", MsgBoxAnswer::kOk, [&] {
        before = world.network.blocksAskedFor;
        world.PumpFor(10000);
        EXPECT_EQ(world.network.blocksAskedFor, before);
    });
    DownloadBuild(300000, NewBuild(300000));
    EXPECT_EQ(world.network.blocksAskedFor, before);
    EXPECT_THROW(Window().Inet1.GetChunk(1), RuntimeError);
}

TEST_F(DownloadEngineFailure, OfAnotherDeletionErrorSaysNothingOfRunning) {
    world.AddFile("tolvex30.exe", "old");
    world.disk.Fail("Kill", error_number::kPermissionDenied);
    world.user.Answer("Permission denied");
    DownloadBuild(2048, NewBuild(2048));
    ExpectFailedDeletion("Error: 70\r\nPermission denied");
}

TEST_F(DownloadEngineFailure, OfUnknownSizeLeavesTheTargetOpenAndEmpty) {
    ExpectReport("Error Downloading File",
                 "Error downloading the file from the server as expected.\r\n"
                 "The file returned was not the correct size and/or format expected.");
    DownloadBuild(-1, NewBuild(2048));
    EXPECT_EQ(Content("tolvex30.exe"), "");
    EXPECT_TRUE(world.trace.StartingWith("Put").empty());
    EXPECT_TRUE(world.trace.StartingWith("Close").empty());
    EXPECT_EQ(FreeFile(), 2);
    EXPECT_FALSE(Window().Inet1.StillExecuting());
    EXPECT_TRUE(Window().cmdClose.Enabled);
}

TEST_F(DownloadEngineFailure, OfUnknownSizeIsReportedOnceTheFirstChunkIsThere) {
    headless::Reply stalled = headless::FileReply(NewBuild(2048));
    stalled.stallAfter = 0;
    ExpectReport(kTimeout, BrokenTransfer("35758\r\nRequest timed out"));
    Download(DownloadMode::kBuild, -1, stalled, 120000);
    EXPECT_TRUE(Window().cmdRetry.Visible);
}

TEST_F(DownloadEngineFailure, OfUnknownSizeAsksForNothingMoreOfTheBodyOnceItIsReported) {
    std::size_t atReport = 0;
    world.user.AtDialog("frmRunning", [&](Form& form) {
        EXPECT_EQ(form.Caption.Get(), "Error Downloading File");
        atReport = world.network.blocksAskedFor;
        world.PumpFor(10000);
        EXPECT_EQ(world.network.blocksAskedFor, atReport);
        form.Unload();
    });
    DownloadBuild(-1, NewBuild(300000));
    EXPECT_EQ(world.network.blocksAskedFor, atReport);
    EXPECT_THROW(Window().Inet1.GetChunk(1), RuntimeError);
}

TEST_F(DownloadEngineFailure, OfSizeZeroIsReportedToo) {
    ExpectReport("Error Downloading File",
                 "Error downloading the file from the server as expected.\r\n"
                 "The file returned was not the correct size and/or format expected.");
    DownloadBuild(0, NewBuild(2048));
    EXPECT_EQ(Percentages(), std::vector<std::string>{});
}

TEST_F(DownloadEngineFailure, OfAFullDiskKeepsThePartThatCame) {
    world.disk.Fail("Put", error_number::kDiskFull, 2);
    ExpectReport(kTimeout, BrokenTransfer("61\r\nDisk full"));
    DownloadBuild(2048, NewBuild(2048));
    EXPECT_EQ(Content("tolvex30.exe"), NewBuild(2048).substr(0, 1024));
    EXPECT_FALSE(Window().cmdRetry.Visible);
    EXPECT_TRUE(Window().cmdClose.Enabled);
}

TEST_F(DownloadEngineFailure, OfABodyThatDoesNotReachTheDiskIsNeverSaidToBeComplete) {
    world.disk.Fail("Flush", error_number::kDiskFull);
    ExpectReport(kTimeout, BrokenTransfer("61\r\nDisk full"));
    DownloadBuild(2048, NewBuild(2048));
    EXPECT_FALSE(world.trace.Contains(Set("lblStatus.Caption", "100 % completed")));
}

TEST_F(DownloadEngineFailure, OfALostConnectionOffersRetryEvenWhenTheDiskIsFullAsWell) {
    headless::Reply broken = headless::FileReply(NewBuild(4096));
    broken.breakAfter = 2500;
    world.disk.Fail("Close", error_number::kDiskFull);
    ExpectReport(kTimeout, BrokenTransfer("35758\r\nRequest timed out"));
    Download(DownloadMode::kBuild, 4096, broken);
    EXPECT_TRUE(Window().cmdRetry.Visible);
}

TEST_F(DownloadEngineFailure, OfATargetThatCannotBeOpened) {
    world.disk.Fail("Open", error_number::kPathFileAccess);
    ExpectReport(kTimeout, BrokenTransfer("75\r\nPath/File access error"));
    DownloadBuild(2048, NewBuild(2048));
    EXPECT_EQ(Content("tolvex30.exe"), "(no such file)");
}

TEST_F(DownloadEngineFailure, OfALostConnectionOffersRetryAndKeepsThePart) {
    headless::Reply broken = headless::FileReply(NewBuild(4096));
    broken.breakAfter = 2500;
    ExpectReport(kTimeout, BrokenTransfer("35758\r\nRequest timed out"));
    Download(DownloadMode::kBuild, 4096, broken);
    EXPECT_EQ(Content("tolvex30.exe"), NewBuild(4096).substr(0, 2500));
    EXPECT_TRUE(Window().cmdRetry.Visible);
    EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(), "Download failed... Timed-out Connection.");
}

TEST_F(DownloadEngineFailure, OfASilentServerTimesOutAndOffersRetry) {
    Window().Inet1.RequestTimeout = 15;
    headless::Reply stalled = headless::FileReply(NewBuild(4096));
    stalled.stallAfter = 2048;
    ExpectReport(kTimeout, BrokenTransfer("35758\r\nRequest timed out"));
    Download(DownloadMode::kBuild, 4096, stalled);
    EXPECT_TRUE(Window().cmdRetry.Visible);
    EXPECT_TRUE(Window().cmdRetry.Enabled);
}

TEST_F(DownloadEngineFailure, LeavesAPartThatTheNextAttemptReplaces) {
    world.disk.Fail("Put", error_number::kDiskFull, 4);
    ExpectReport(kTimeout, BrokenTransfer("61\r\nDisk full"));
    DownloadBuild(8192, NewBuild(8192));
    EXPECT_EQ(Content("tolvex30.exe").size(), 3072U);

    DownloadBuild(2048, NewBuild(2048));

    EXPECT_EQ(Content("tolvex30.exe"), NewBuild(2048));
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "No update is required at this time.");
}

class DownloadEngineRetry : public CheckTest {
protected:
    /// The first download breaks off as `broken` says, the user presses Retry.
    void RunWithRetry(headless::Reply broken) {
        Publish(build, kServerDate);
        broken.body = build;
        world.network.AnswerNext(Get(kNewBuild), broken);
        world.user.Answer("The file does not exist.");
        ExpectReport(kTimeout, BrokenTransfer("35758\r\nRequest timed out"));
        RunCheck();
        ASSERT_TRUE(Window().cmdRetry.Visible);
        // What came in has no room for a version block to be read from in a real build.
        world.AddFile("tolvex30.exe", Content("tolvex30.exe").substr(3));
        world.user.Answer("The file is probably corrupt.");
        world.Click(Window(), Window().cmdRetry);
        world.PumpFor(60000);
    }

    const std::string build = headless::Build("3.0.12.5", 250000);
};

TEST_F(DownloadEngineRetry, SucceedsAfterALostConnection) {
    headless::Reply broken;
    broken.breakAfter = 100000;
    RunWithRetry(broken);
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "Click on Install Button.");
    EXPECT_EQ(Content("tolvex30.exe"), build);
    EXPECT_FALSE(Window().cmdRetry.Visible);
}

TEST_F(DownloadEngineRetry, SucceedsAfterATimeOutInTheMiddleOfTheBody) {
    headless::Reply stalled;
    stalled.stallAfter = 100000;
    RunWithRetry(stalled);
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "Click on Install Button.");
    EXPECT_EQ(Content("tolvex30.exe"), build);
}

}  // namespace
}  // namespace swiftpatch
