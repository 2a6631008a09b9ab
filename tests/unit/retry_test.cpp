#include "install/frmRunning.h"
#include "runtime/runtime_error.h"
#include "unit/program_test.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

constexpr const char* kHead = "HEAD http://tolvex.example/files/tolvex30.exe";
constexpr const char* kGet = "GET http://tolvex.example/files/tolvex30.exe";

class Retry : public ProgramTest {
protected:
    Retry() {
        world.Dispatch([this] { Window().Show(); });
        Window().tmrCheckVersion.Enabled = false;
        Window().cmdRetry.Visible = true;
        Window().connectivityDone = true;
        world.trace.Clear();
    }

    void Press() { world.Click(Window(), Window().cmdRetry); }
};

TEST_F(Retry, TakesItsStepsInOrder) {
    Press();
    EXPECT_THAT(
        world.trace.Lines(),
        ElementsAre("cmdRetry.Visible = False", "Animation1.AutoPlay = True",
                    "Animation1.Open C:\\Tolvex\\filecopy.avi", "Animation1.Visible = True",
                    "ProgressBar1.Visible = True", "lblStatus.Caption = \"Initializing update...\"",
                    "frmSwiftPatch.Show", "DoEvents", "tmrCheckVersion.Enabled = True"));
    EXPECT_TRUE(Window().retry);
}

TEST_F(Retry, ClearsTheConnectivityFlag) {
    Press();
    EXPECT_FALSE(Window().connectivityDone);
}

TEST_F(Retry, SecondQuickPressFindsTheButtonHidden) {
    world.AtPump(1, [this] { Press(); });
    Press();
    EXPECT_EQ(world.trace.Count("cmdRetry.Visible = False"), 1U);
    EXPECT_EQ(world.trace.Count("tmrCheckVersion.Enabled = True"), 1U);
    Press();
    EXPECT_EQ(world.trace.Count("cmdRetry.Visible = False"), 1U);
}

TEST_F(Retry, ErrorIsReportedAndTheCheckIsNotStarted) {
    world.AtPump(1, [] { throw RuntimeError(error_number::kDeviceIoError); });
    world.user.Answer(
        "Error Number: 57\r\n\r\nDevice I/O error\r\n\r\n"
        "Source: [frmSwiftPatch] cmdRetry_Click()");
    Press();
    EXPECT_FALSE(Window().retry);
    EXPECT_FALSE(Window().tmrCheckVersion.Enabled);
}

class RetryAfterTimeOut : public ProgramTest {};

TEST_F(RetryAfterTimeOut, RunsTheWholeCheckAgainConnectivityIncluded) {
    const std::string build = headless::Build("3.0.12.5", 250000);
    Publish(build);
    headless::Reply stalled = headless::FileReply(build);
    stalled.stallAfter = 5000;
    world.network.AnswerNext(kGet, stalled);
    world.AddFile("tolvex.exe", headless::Build("3.0.11.0", 210000));
    world.user.Answer("The file does not exist.");
    world.user.AtDialog("frmRunning", [this](Form& form) {
        auto& dialog = static_cast<frmRunning&>(form);
        EXPECT_EQ(dialog.Caption.Get(), "Internet Connection Timeout");
        world.Click(dialog, dialog.cmdExit);
    });
    RunCheck();
    ASSERT_TRUE(Window().cmdRetry.Visible);
    EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(), "Download failed... Timed-out Connection.");
    ASSERT_EQ(world.network.Requests(), (std::vector<std::string>{kHead, kHead, kHead, kGet}));

    world.Click(Window(), Window().cmdRetry);
    world.PumpFor(30000);
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "Click on Install Button.");
    EXPECT_EQ(world.network.Requests(),
              (std::vector<std::string>{kHead, kHead, kHead, kGet, kHead, kHead, kHead, kGet}));
    EXPECT_EQ(world.disk.Find(world.PathOf("tolvex30.exe"))->bytes, build);
    EXPECT_FALSE(Window().cmdRetry.Visible);
}

}  // namespace
}  // namespace swiftpatch
