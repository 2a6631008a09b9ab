#include "install/frmLog.h"

#include "runtime/runtime_error.h"
#include "shared/shared_state.h"
#include "unit/program_test.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

class frmLogTest : public ProgramTest {
protected:
    frmLogTest() {
        shared.LogFileName = "error.log";
        Window().Show();
        world.trace.Clear();
    }
    ~frmLogTest() override { frmLog::Instance.Release(); }

    void PutLog(const std::string& bytes) { world.AddFile("error.log", bytes); }
    frmLog& Viewer() { return frmLog::Instance.Get(); }
    /// What the viewer shows of a log of these bytes.
    std::string Shown(const std::string& bytes) {
        PutLog(bytes);
        Viewer().LogFileName = "error.log";
        Viewer().LoadLogFile();
        return Viewer().txtLogFile.Text;
    }
    void PressReadLog() {
        Window().cmdReadLog.Visible = true;
        world.Click(Window(), Window().cmdReadLog);
    }
};

TEST_F(frmLogTest, ReadLogSwapsTheWindows) {
    PutLog("one\r\n");
    PressReadLog();
    EXPECT_FALSE(Window().Visible());
    EXPECT_TRUE(Viewer().Visible());
    EXPECT_EQ(Viewer().LogFileName, "error.log");
    EXPECT_EQ(Viewer().txtLogFile.Text.Get(), "one\r\n");
    EXPECT_EQ(Viewer().Caption.Get(), "Error Log File");
    EXPECT_EQ(Viewer().cmdMain.Caption.Get(), "Main");
    EXPECT_EQ(Window().cmdReadLog.Caption.Get(), "Error Log");
    EXPECT_TRUE(InOrder(world.trace.Lines(), {"frmSwiftPatch.Hide", "frmLog.Load", "frmLog.Show"}));
}

TEST_F(frmLogTest, MainSwapsBackAfterOneYieldAndUnloadsTheViewer) {
    PutLog("one\r\n");
    PressReadLog();
    world.trace.Clear();
    world.Click(Viewer(), Viewer().cmdMain);
    EXPECT_THAT(world.trace.Lines(),
                ElementsAre("DoEvents", "frmLog.Hide", "frmSwiftPatch.Show", "frmLog.Destroy"));
    EXPECT_TRUE(Window().Visible());
    EXPECT_FALSE(frmLog::Instance.Exists());
}

TEST_F(frmLogTest, ClosingTheViewerBringsTheMainWindowBack) {
    PutLog("one\r\n");
    PressReadLog();
    world.Close(Viewer());
    EXPECT_TRUE(Window().Visible());
    EXPECT_FALSE(frmLog::Instance.Exists());
    EXPECT_FALSE(world.RunOver());
}

TEST_F(frmLogTest, EveryVisitReadsTheFileAfresh) {
    PutLog("one\r\n");
    PressReadLog();
    world.Click(Viewer(), Viewer().cmdMain);
    PutLog("two\r\n");
    PressReadLog();
    EXPECT_EQ(Viewer().txtLogFile.Text.Get(), "two\r\n");
}

TEST_F(frmLogTest, FileIsReadOnceAndClosed) {
    PutLog("one\r\n");
    PressReadLog();
    EXPECT_EQ(world.trace.Count("OpenForInput C:\\Tolvex\\error.log #1"), 1U);
    EXPECT_EQ(world.trace.Count("Close #1"), 1U);
    EXPECT_EQ(world.trace.StartingWith("txtLogFile.Text").size(), 2U);
}

TEST_F(frmLogTest, WithoutANameTheBoxKeepsWhatItHolds) {
    shared.LogFileName = "";
    PressReadLog();
    EXPECT_TRUE(Viewer().Visible());
    Viewer().txtLogFile.Text = "kept";
    Viewer().LoadLogFile();
    EXPECT_EQ(Viewer().txtLogFile.Text.Get(), "kept");
    EXPECT_EQ(world.trace.StartingWith("OpenForInput").size(), 0U);
}

TEST_F(frmLogTest, FileThatIsGoneMeanwhileIsNoError) {
    PressReadLog();
    EXPECT_TRUE(Viewer().Visible());
    EXPECT_EQ(Viewer().txtLogFile.Text.Get(), "");
    EXPECT_EQ(world.trace.StartingWith("txtLogFile.Text").size(), 0U);
}

TEST_F(frmLogTest, EmptyFileEmptiesTheBox) {
    Viewer().txtLogFile.Text = "old";
    EXPECT_EQ(Shown(""), "");
}

TEST_F(frmLogTest, LastLineWithoutAnEndingIsShownWithOne) {
    EXPECT_EQ(Shown("one\r\ntwo\r\nthree"), "one\r\ntwo\r\nthree\r\n");
    EXPECT_EQ(Shown("one\r\n\r\n"), "one\r\n\r\n");
}

TEST_F(frmLogTest, LoneLineFeedsReturnsAndNulsAreKept) {
    EXPECT_EQ(Shown("a\nb\rc\r\nd"), "a\nb\rc\r\nd\r\n");
    const std::string nuls("a\0b\r\n\0", 6);
    EXPECT_EQ(Shown(nuls), nuls + "\r\n");
}

TEST_F(frmLogTest, LinesOfAnyLengthAreShown) {
    const std::string line(200'000, 'x');
    EXPECT_EQ(Shown(line + "\r\nend"), line + "\r\nend\r\n");
}

TEST_F(frmLogTest, TheBoxGetsALongLogInOnePiece) {
    std::string log;
    for (int i = 0; i < 200'000; ++i) {
        log += "2026-03-10 12:00:00 something went wrong, see there\r\n";
    }
    EXPECT_EQ(Shown(log), log);
    EXPECT_EQ(world.trace.StartingWith("txtLogFile.Text").size(), 2U);
}

TEST_F(frmLogTest, ErrorWhileReadingIsReportedAndTheMainWindowComesBack) {
    PutLog("one\r\n");
    world.disk.Fail("LineInput", error_number::kDeviceIoError);
    world.user.Answer(
        "Error Number: 57\r\n\r\nDevice I/O error\r\n\r\nSource: [frmSwiftPatch] "
        "cmdReadLog_Click()");
    PressReadLog();
    EXPECT_TRUE(Window().Visible());
    EXPECT_FALSE(frmLog::Instance.Exists());
    EXPECT_EQ(world.trace.Count("Close #1"), 1U);
    PressReadLog();
    EXPECT_EQ(Viewer().txtLogFile.Text.Get(), "one\r\n");
}

TEST_F(frmLogTest, ViewerItselfDoesNotTrapErrors) {
    PutLog("one\r\n");
    world.disk.Fail("OpenForInput", error_number::kPermissionDenied);
    Viewer().LogFileName = "error.log";
    EXPECT_THROW(Viewer().LoadLogFile(), RuntimeError);
}

TEST_F(frmLogTest, ButtonIsOfferedOnAFailureWhenNameAndFileAreThere) {
    PutLog("one\r\n");
    world.user.AtDialog("frmRunning", [](Form& form) { form.Hide(); });
    std::string message = "No connection";
    Window().error_Message(message, 0, "");
    EXPECT_TRUE(Window().cmdReadLog.Visible);
}

TEST_F(frmLogTest, ButtonStaysHiddenWithoutAFileOrAName) {
    world.user.AtDialog("frmRunning", [](Form& form) { form.Hide(); });
    std::string message = "No connection";
    Window().error_Message(message, 0, "");
    EXPECT_FALSE(Window().cmdReadLog.Visible);

    PutLog("one\r\n");
    shared.LogFileName = "";
    world.user.AtDialog("frmRunning", [](Form& form) { form.Hide(); });
    Window().error_Message(message, 0, "");
    EXPECT_FALSE(Window().cmdReadLog.Visible);
}

}  // namespace
}  // namespace swiftpatch
