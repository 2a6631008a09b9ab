#include "runtime/runtime_error.h"
#include "unit/download_engine_support.h"

namespace swiftpatch {
namespace {

// What the window's button on the task bar shows of the work.
class DownloadEngineTaskbar : public EngineTest {
protected:
    DownloadEngineTaskbar() { InstallSameVersion(); }

    /// A download that the disk ends after its first chunk.
    void Fail() {
        world.disk.Fail("Put", error_number::kDiskFull, 2);
        ExpectReport("Internet Connection Timeout", BrokenTransfer("61\r\nDisk full"));
        DownloadBuild(2048, NewBuild(2048));
    }

    using Shown = std::vector<std::int32_t>;
};

TEST_F(DownloadEngineTaskbar, ShowsEachPercentageOnceAndNothingAfterTheDownload) {
    DownloadBuild(204600, NewBuild(5120));
    EXPECT_EQ(world.taskbar, (Shown{0, 1, 2, 3, taskbar::kNothing}));
}

TEST_F(DownloadEngineTaskbar, StaysAtAHundredForALongerBody) {
    DownloadBuild(1024, NewBuild(3072));
    EXPECT_EQ(world.taskbar, (Shown{100, taskbar::kNothing}));
}

TEST_F(DownloadEngineTaskbar, ShowsAFailureUntilRetry) {
    Fail();
    ASSERT_FALSE(world.taskbar.empty());
    EXPECT_EQ(world.taskbar.back(), taskbar::kFailure);
    Window().cmdRetry.Visible = true;
    world.Click(Window(), Window().cmdRetry);
    EXPECT_EQ(world.taskbar.back(), taskbar::kNothing);
}

TEST_F(DownloadEngineTaskbar, ShowsThatAHeldBuildCouldNotBeReplaced) {
    world.AddFile("tolvex30.exe", "old").held = true;
    world.user.Answer("is probably running");
    DownloadBuild(2048, NewBuild(2048));
    EXPECT_EQ(world.taskbar, Shown{taskbar::kFailure});
}

}  // namespace
}  // namespace swiftpatch
