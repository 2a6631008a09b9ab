#include "runtime/runtime_error.h"
#include "shared/shared_state.h"
#include "unit/program_test.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

constexpr const char* kTopMost = "SetWindowPos 65552 -1 0 0 0 0 3";
constexpr const char* kArmed = "tmrCheckVersion.Enabled = True";

class frmSwiftPatchLoad : public ProgramTest {
protected:
    void Load() {
        world.Dispatch([this] { Window().Show(); });
    }

    /// The trace without the system information object's own look-ups.
    std::vector<std::string> Lines() const {
        std::vector<std::string> lines = world.trace.Lines();
        std::erase_if(lines,
                      [](const std::string& line) { return line.starts_with("GetVersionEx"); });
        return lines;
    }
};

TEST_F(frmSwiftPatchLoad, TakesItsStepsInOrder) {
    Load();
    EXPECT_THAT(
        Lines(),
        ElementsAre("frmSwiftPatch.Load", kTopMost, "DoEvents", "txtDebug.Text = \"\"",
                    "lblVersion.Caption = \"Swift Patch Version: 1.2.002\"",
                    "cmdReadLog.Visible = False", "lblStatus.BackStyle = 0",
                    "ProgressBar1.Max = 100", "ProgressBar1.Min = 0", "ProgressBar1.Value = 0",
                    "lblStatus.Caption = \"Initializing update...\"", "frmSwiftPatch.Show",
                    "DoEvents", "lblStatus.BackColor = -2147483633", "EnumWindows",
                    "Animation1.AutoPlay = True", "Animation1.Open C:\\Tolvex\\filecopy.avi",
                    "Animation1.Visible = True", "ProgressBar1.Visible = True",
                    "lblStatus.Caption = \"Initializing update...\"", "DoEvents", kArmed, kTopMost,
                    "DoEvents", "frmSwiftPatch.Show"));
}

TEST_F(frmSwiftPatchLoad, SystemInformationIsReadBeforeTheProgressBarIsSetUp) {
    Load();
    ASSERT_FALSE(world.trace.StartingWith("GetVersionEx").empty());
    EXPECT_TRUE(InOrder(world.trace.Lines(), {"lblStatus.BackStyle = 0",
                                              world.trace.StartingWith("GetVersionEx").front(),
                                              "ProgressBar1.Max = 100"}));
    EXPECT_TRUE(Window().systemInformation.has_value());
}

TEST_F(frmSwiftPatchLoad, SecondInstanceEndsBeforeAnythingIsShown) {
    world.machine.prevInstance = true;
    Load();
    EXPECT_THAT(world.trace.Lines(), ElementsAre("frmSwiftPatch.Load", "End"));
    EXPECT_TRUE(world.RunOver());
}

TEST_F(frmSwiftPatchLoad, DirectoriesAreStoredForTheStages) {
    Load();
    EXPECT_EQ(shared.WindowsDirectory, "C:\\WINDOWS\\");
    EXPECT_EQ(shared.SystemDirectory, "C:\\WINDOWS\\SYSTEM32\\");
}

TEST_F(frmSwiftPatchLoad, ResultOfTheTopmostSwitchIsKept) {
    world.machine.topMostResult = 5;
    Load();
    EXPECT_EQ(Window().topMost, 5);
}

TEST_F(frmSwiftPatchLoad, RunGoesOnWhenTheTopmostSwitchFails) {
    world.machine.topMostResult = 0;
    Load();
    EXPECT_TRUE(Window().tmrCheckVersion.Enabled);
}

TEST_F(frmSwiftPatchLoad, FirstCheckComes500MillisecondsAfterTheLoad) {
    Load();
    EXPECT_TRUE(Window().checkArmed);
    EXPECT_EQ(Window().tmrCheckVersion.Interval.Get(), 500);
    world.PumpFor(500);
    EXPECT_FALSE(world.trace.Contains("tmrCheckVersion.Enabled = False"));
    world.AtPump(3, [this] { world.EndRun(); });
    world.PumpFor(10);
    EXPECT_TRUE(world.trace.Contains("tmrCheckVersion.Enabled = False"));
}

TEST_F(frmSwiftPatchLoad, RevisionHasThreeDigitsAndTheMinorVersionAsManyAsItNeeds) {
    world.machine.minor = 12;
    world.machine.revision = 5;
    Load();
    EXPECT_EQ(Window().lblVersion.Caption.Get(), "Swift Patch Version: 1.12.005");
}

TEST_F(frmSwiftPatchLoad, MinorVersionZeroIsShown) {
    world.machine.minor = 0;
    world.machine.revision = 0;
    Load();
    EXPECT_EQ(Window().lblVersion.Caption.Get(), "Swift Patch Version: 1.0.000");
}

TEST_F(frmSwiftPatchLoad, MissingAnimationHidesAnimationAndProgressBar) {
    world.disk.Remove(world.PathOf("filecopy.avi"));
    Load();
    EXPECT_FALSE(Window().Animation1.Visible);
    EXPECT_FALSE(Window().ProgressBar1.Visible);
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "Update disabled.");
    EXPECT_TRUE(Window().tmrCheckVersion.Enabled);
}

TEST_F(frmSwiftPatchLoad, RunningProgramIsLookedForAfterTheWindowIsShownAndBeforeTheAnimation) {
    world.desktop = {{700, "q-Tolvex.exe", "q-Tolvex.exe", 0, false, {}}};
    world.user.Answer("Detected Running", MsgBoxAnswer::kNo,
                      [this] { EXPECT_TRUE(Window().Visible()); });
    Load();
    EXPECT_TRUE(InOrder(world.trace.Lines(),
                        {"frmSwiftPatch.Show", "lblStatus.BackColor = -2147483633", "EnumWindows",
                         "SendMessage 700 0x112 0xfffff060 0", "Animation1.AutoPlay = True"}));
    EXPECT_TRUE(Window().tmrCheckVersion.Enabled);
}

TEST_F(frmSwiftPatchLoad, MajorVersionZeroShowsTheBetaNoticeAfterTheCheckIsArmed) {
    world.machine.major = 0;
    world.machine.minor = 9;
    world.machine.revision = 7;
    world.user.Answer("Beta Version");
    Load();
    const std::vector<std::string> lines = Lines();
    ASSERT_GT(lines.size(), 5U);
    EXPECT_THAT(
        std::vector<std::string>(lines.end() - 5, lines.end()),
        ElementsAre(kArmed,
                    "MsgBox 64 \"Beta Version\" \"You are running a free version of tolvex updater"
                    "\\r\\nwhich contains a few debug message boxes.\\r\\n\\r\\n"
                    "Beta Version 0.9.7\" -> OK",
                    kTopMost, "DoEvents", "frmSwiftPatch.Show"));
}

TEST_F(frmSwiftPatchLoad, ErrorIsReportedAndTheCheckIsNotArmed) {
    world.AtPump(2, [] { throw RuntimeError(error_number::kOverflow); });
    world.user.Answer("Error Number: 6");
    Load();
    EXPECT_TRUE(world.trace.Contains(
        "MsgBox 64 \"SwiftPatch\" \"Error Number: 6\\r\\n\\r\\nOverflow\\r\\n\\r\\n"
        "Source: [frmSwiftPatch] Form_Load()\" -> OK"));
    EXPECT_FALSE(world.trace.Contains("EnumWindows"));
    EXPECT_FALSE(Window().tmrCheckVersion.Enabled);
    EXPECT_FALSE(Window().checkArmed);
}

TEST_F(frmSwiftPatchLoad, ClosingTheWindowWhileItLoadsEndsTheLoad) {
    world.user.Answer("Are you sure", MsgBoxAnswer::kYes);
    world.AtPump(2, [this] { world.Close(Window()); });
    Load();
    EXPECT_TRUE(world.RunOver());
    EXPECT_FALSE(world.trace.Contains("EnumWindows"));
}

class frmSwiftPatchShowAnimation : public ProgramTest {};

TEST_F(frmSwiftPatchShowAnimation, ExistingFileIsPlayed) {
    Window().ShowAnimation("C:\\Tolvex\\filecopy.avi", "a message");
    EXPECT_THAT(
        world.trace.Lines(),
        ElementsAre("Animation1.AutoPlay = True", "Animation1.Open C:\\Tolvex\\filecopy.avi",
                    "Animation1.Visible = True", "ProgressBar1.Visible = True",
                    "lblStatus.Caption = \"Initializing update...\""));
}

TEST_F(frmSwiftPatchShowAnimation, EmptyPathOrMissingOrHiddenFileStopsIt) {
    world.AddFile("hidden.avi", "RIFF").hidden = true;
    for (const std::string path : {"", "C:\\Tolvex\\none.avi", "C:\\Tolvex\\hidden.avi"}) {
        world.trace.Clear();
        Window().ShowAnimation(path, "a message");
        EXPECT_THAT(
            world.trace.Lines(),
            ElementsAre("DoEvents", "Animation1.AutoPlay = False", "Animation1.Stop",
                        "fraMessages.Refresh", "Animation1.Visible = False",
                        "ProgressBar1.Visible = False", "lblStatus.Caption = \"Update disabled.\""))
            << path;
    }
}

}  // namespace
}  // namespace swiftpatch
