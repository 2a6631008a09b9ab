#include "mainwindow/version_comparison.h"
#include "shared/shared_state.h"
#include "unit/download_engine_support.h"

namespace swiftpatch {
namespace {

class ComparisonOutcome : public EngineTest {
protected:
    std::string Outcome(std::int16_t result, const std::string& name = "tolvex.exe") {
        world.Dispatch([&] { Window().ShowComparisonOutcome(result, name); });
        return Joined(world.trace.Lines());
    }

    std::string Offered() {
        return Joined(
            {"tmrCheckVersion.Enabled = False",
             Set("lblAnimationMsg.Caption", "You have downloaded the latest version of q-tolvex"),
             "Animation1.Stop", "cmdInstall.Visible = True", "cmdInstall.Enabled = True",
             Set("lblStatus.Caption", "Click on Install Button."), "frmSwiftPatch.MousePointer = 0",
             Set("lblTolvexVersion.Caption", "q-tolvex Version available to install: 3.00.12.05"),
             "cmdClose.Enabled = True"});
    }
};

TEST_F(ComparisonOutcome, OfAMissingProgramIsReported) {
    ExpectReport("Program File Not Found",
                 "The main program does not exist in the specified posiiton.");
    Outcome(-3);
    EXPECT_TRUE(Window().programMissing);
}

TEST_F(ComparisonOutcome, OfABadNameIsReported) {
    ExpectReport("Bad Control File Name",
                 "The file 'controlfile.ini' you are requesting is invalid.\r\n"
                 "The file could have been tampered with.");
    Outcome(-1, "controlfile.ini");
    EXPECT_FALSE(Window().programMissing);
}

TEST_F(ComparisonOutcome, OfNothingOnOfferDisablesCloseAndTheCheck) {
    Window().programMissing = true;
    Window().cmdClose.Enabled = true;
    Window().tmrCheckVersion.Enabled = true;
    world.trace.Clear();
    EXPECT_EQ(Outcome(0), "cmdClose.Enabled = False\ntmrCheckVersion.Enabled = False");
    EXPECT_FALSE(Window().programMissing);
}

TEST_F(ComparisonOutcome, OfNothingNewerSaysThatNoUpdateIsRequired) {
    EXPECT_EQ(Outcome(1),
              Joined({"frmSwiftPatch.MousePointer = 0", "ProgressBar1.Value = 0",
                      "cmdClose.Enabled = True",
                      Set("lblStatus.Caption", "No update is required at this time."), "DoEvents",
                      Set("frmSwiftPatch.Caption",
                          "Swift Patch - Download No Update Required - All Files Current"),
                      "DoEvents", "Animation1.Stop", "fraMessages.Visible = False",
                      "ProgressBar1.Visible = False"}));
}

TEST_F(ComparisonOutcome, OfANewerBuildOffersIt) {
    world.AddFile("tolvex30.exe", NewBuild(100));
    EXPECT_EQ(Outcome(2), Offered());
    EXPECT_EQ(Window().stagedVersion.ProductVersion, "3.00.12.05");
}

TEST_F(ComparisonOutcome, OfANewerBuildInstallsItAtOnceWhenThatIsSet) {
    shared.InstallAtOnce = true;
    world.AddFile("tolvex.exe", headless::Build("3.0.11.0", 100));
    world.AddFile("tolvex30.exe", NewBuild(100));
    world.user.Answer("A backup file");
    const std::string steps = Outcome(2);
    EXPECT_TRUE(steps.starts_with(Offered() + "\nEnumWindows\n")) << steps;
    EXPECT_EQ(Content("tolvex.exe"), NewBuild(100));
}

TEST_F(ComparisonOutcome, OfAnyOtherResultIsNothing) {
    for (const std::int16_t result : std::vector<std::int16_t>{-4, -2, 3, 32767}) {
        EXPECT_EQ(Outcome(result), "") << result;
    }
}

TEST_F(ComparisonOutcome, ResetsTheDownloadMode) {
    for (const std::int16_t result : std::vector<std::int16_t>{0, 1, 3}) {
        Window().downloadMode = DownloadMode::kBuild;
        Outcome(result);
        EXPECT_EQ(Window().downloadMode, DownloadMode::kNone) << result;
    }
}

TEST_F(ComparisonOutcome, OfTheBusyDisplayIsHiddenAfterOneYield) {
    world.Dispatch([this] { Window().HideBusyDisplay(); });
    EXPECT_EQ(Joined(world.trace.Lines()),
              Joined({"DoEvents", "Animation1.Stop", "fraMessages.Visible = False",
                      "ProgressBar1.Visible = False"}));
}

TEST_F(ComparisonOutcome, OfADownloadWithoutAProgram) {
    ExpectReport("Program File Not Found",
                 "The main program does not exist in the specified posiiton.");
    DownloadBuild(2048, NewBuild(2048));
    EXPECT_TRUE(Window().programMissing);
    EXPECT_EQ(Content("tolvex30.exe"), NewBuild(2048));
    EXPECT_FALSE(Window().chkRunTolvex.Value.Get() == CheckState::kChecked);
}

// The error of the install has no trap of its own; the transfer that pressed the button has one.
TEST_F(ComparisonOutcome, OfADownloadWhoseInstallAtOnceFailsIsReportedAsABrokenTransfer) {
    shared.InstallAtOnce = true;
    world.AddFile("tolvex.exe", headless::Build("3.0.11.0", 100));
    world.disk.Fail("Kill", error_number::kPathFileAccess);
    world.user.Answer("A backup file", MsgBoxAnswer::kOk,
                      [this] { world.AddFile("tolvex30.exe", headless::Build("", 400)); });
    world.user.Answer("The file is probably corrupt.");
    ExpectReport("Internet Connection Timeout",
                 BrokenTransfer("438\r\nObject doesn't support this property or method"));
    DownloadBuild(2048, NewBuild(2048));
    EXPECT_FALSE(world.RunOver());
    EXPECT_TRUE(Window().cmdClose.Enabled);
}

TEST_F(ComparisonOutcome, OfADownloadThatIsNewer) {
    world.AddFile("tolvex.exe", headless::Build("3.0.11.0", 100));
    DownloadBuild(2048, NewBuild(2048));
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "Click on Install Button.");
    EXPECT_TRUE(Window().cmdInstall.Enabled);
    EXPECT_TRUE(Window().lblTolvexVersion.Visible);
}

TEST_F(ComparisonOutcome, OfADownloadWithoutVersionReachesTheEnginesHandler) {
    world.AddFile("tolvex.exe", headless::Build("3.0.11.0", 100));
    world.user.Answer("The file is probably corrupt.");
    ExpectReport("Internet Connection Timeout", BrokenTransfer("9\r\nSubscript out of range"));
    DownloadBuild(2048, headless::Build("", 2048));
    EXPECT_EQ(Content("tolvex30.exe"), "(no such file)");
}

}  // namespace
}  // namespace swiftpatch
