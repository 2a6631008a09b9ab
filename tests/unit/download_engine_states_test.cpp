#include "runtime/runtime_error.h"
#include "unit/download_engine_support.h"

namespace swiftpatch {
namespace {

class DownloadEngineStates : public EngineTest {
protected:
    std::string StepsOf(int state) {
        world.trace.Clear();
        world.Dispatch([&] { Window().Inet1_StateChanged(static_cast<std::int16_t>(state)); });
        return Joined(world.trace.Lines());
    }
};

TEST_F(DownloadEngineStates, OfTheWayThereStartTheBusyAnimation) {
    for (const int state : {3, 4, 5, 9}) {
        EXPECT_EQ(StepsOf(state), AnimationStarted()) << state;
    }
}

TEST_F(DownloadEngineStates, InBetweenDoNothing) {
    for (const int state : {0, 1, 2, 6, 7, 8, 10, 13, -1}) {
        EXPECT_EQ(StepsOf(state), "") << state;
    }
}

TEST_F(DownloadEngineStates, WithoutAnAnimationFileStopTheAnimation) {
    world.disk.Remove(world.PathOf("filecopy.avi"));
    for (const int state : {3, 4, 5, 9}) {
        EXPECT_EQ(StepsOf(state), "DoEvents\n" + AnimationStopped()) << state;
    }
}

TEST_F(DownloadEngineStates, ErrorYieldsOnceAndLetsTheWindowGo) {
    EXPECT_EQ(StepsOf(11), "DoEvents\nfrmSwiftPatch.MousePointer = 0\ncmdClose.Enabled = True");
}

TEST_F(DownloadEngineStates, ErrorWhileAnotherRequestRunsOnlyYields) {
    world.network.Answer(Get(kNewBuild), SilentReply());
    Window().Inet1.Execute(kNewBuild, "GET");
    EXPECT_EQ(StepsOf(11), "DoEvents");
}

TEST_F(DownloadEngineStates, CompletedDuringAProbeIsIgnored) {
    Window().headerProbe = true;
    Window().downloadMode = DownloadMode::kBuild;
    Window().expectedSize = 2048;
    EXPECT_EQ(StepsOf(12), "");
}

TEST_F(DownloadEngineStates, FailedRequestIsNoReportedFailure) {
    headless::Reply refused;
    refused.failure = error_number::kNoConnection;
    Window().Pointer = MousePointer::kHourglass;
    Download(DownloadMode::kBuild, 2048, refused);
    EXPECT_EQ(Window().Pointer.Get(), MousePointer::kDefault);
    EXPECT_TRUE(Window().cmdClose.Enabled);
    EXPECT_EQ(Window().Inet1.ResponseCode(), error_number::kNoConnection);
    EXPECT_TRUE(world.trace.StartingWith("Open").empty());
    EXPECT_TRUE(world.trace.StartingWith("frmRunning").empty());
}

}  // namespace
}  // namespace swiftpatch
