#include "app/frmSplash1.h"
#include "runtime/program.h"
#include "shared/shared_state.h"
#include "unit/program_test.h"

namespace swiftpatch {
namespace {

constexpr const char* kMainWindowShown = "frmSwiftPatch.Show";

class frmSplash1HandOver : public ProgramTest {
protected:
    frmSplash1& Form() { return frmSplash1::Instance.Get(); }

    void Start() {
        world.Dispatch([] { Main(); });
    }

    bool MainWindowShown() const { return world.trace.Contains(kMainWindowShown); }
};

TEST_F(frmSplash1HandOver, MainWindowComesAfter3000MillisecondsAndNotBefore) {
    world.AddFile("tolvex.dta.txt", "[Updates]\r\nServerDownloadPath=elsewhere.example/x\r\n");
    Start();
    EXPECT_EQ(shared.ServerDownloadPath, "elsewhere.example/x/");
    world.PumpFor(3000);
    EXPECT_FALSE(MainWindowShown());
    EXPECT_TRUE(Form().Visible());
    world.PumpFor(1);
    EXPECT_TRUE(MainWindowShown());
    EXPECT_FALSE(frmSplash1::Instance.Exists());
}

TEST_F(frmSplash1HandOver, TimeCountsFromTheEndOfTheLoading) {
    // A slow fade: one second passes within the load.
    world.AtPump(100, [this] { world.Advance(1000); });
    Start();
    world.PumpFor(2999);
    EXPECT_FALSE(MainWindowShown());
    world.PumpFor(2);
    EXPECT_TRUE(MainWindowShown());
}

TEST_F(frmSplash1HandOver, SplashHidesThenTheMainWindowComesThenTheSplashUnloads) {
    Start();
    world.trace.Clear();
    world.Dispatch([this] { Form().tmrUnload.RaiseElapsed(); });

    const std::vector<std::string>& lines = world.trace.Lines();
    ASSERT_GT(lines.size(), 5U);
    EXPECT_THAT(std::vector<std::string>(lines.begin(), lines.begin() + 4),
                testing::ElementsAre("tmrUnload.Enabled = False", "DoEvents", "frmSplash1.Hide",
                                     "frmSwiftPatch.Load"));
    EXPECT_EQ(lines[lines.size() - 2], kMainWindowShown);
    EXPECT_EQ(lines.back(), "frmSplash1.Destroy");
    EXPECT_FALSE(frmSplash1::Instance.Exists());
    EXPECT_FALSE(world.RunOver());
}

TEST_F(frmSplash1HandOver, HappensOnceAlthoughTheMainWindowAsksAQuestionForLong) {
    world.desktop = {{700, "q-Tolvex.exe", "q-Tolvex.exe", 0, false, {}}};
    Start();
    world.user.Answer("Detected Running", MsgBoxAnswer::kNo, [this] { world.PumpFor(20000); });
    world.PumpFor(3001);

    EXPECT_EQ(world.trace.Count("frmSplash1.Hide"), 1U);
    EXPECT_EQ(world.trace.Count("frmSwiftPatch.Load"), 1U);
    EXPECT_EQ(world.trace.Count("frmSplash1.Destroy"), 1U);
}

TEST_F(frmSplash1HandOver, ExitEndsTheProgramAtOnce) {
    Start();
    world.trace.Clear();
    world.Click(Form(), Form().cmdExit);

    EXPECT_TRUE(world.RunOver());
    EXPECT_EQ(world.trace.Lines(), std::vector<std::string>{"End"});
    world.PumpFor(10000);
    EXPECT_FALSE(frmSwiftPatch::Instance.Exists());
}

TEST_F(frmSplash1HandOver, ExitAmidTheFadeEndsTheLoading) {
    world.AtPump(100, [this] { world.Click(Form(), Form().cmdExit); });
    Start();

    EXPECT_TRUE(world.RunOver());
    EXPECT_EQ(world.trace.Lines().back(), "End");
    EXPECT_TRUE(world.trace.StartingWith("lblLoading").empty());
}

TEST_F(frmSplash1HandOver, ExitInTheLastYieldShowsNoMainWindow) {
    Start();
    world.AtPump(1, [this] { world.Click(Form(), Form().cmdExit); });
    world.Dispatch([this] { Form().tmrUnload.RaiseElapsed(); });

    EXPECT_TRUE(world.RunOver());
    EXPECT_FALSE(MainWindowShown());
}

}  // namespace
}  // namespace swiftpatch
