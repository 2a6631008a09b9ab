#include "runtime/runtime_error.h"
#include "shared/shared_state.h"
#include "unit/check_support.h"

namespace swiftpatch {
namespace {

using headless::Build;

constexpr const char* kQuestion = "Go back from version 3.00.12.05 to version 3.00.11.00?";
constexpr const char* kKeep =
    "FileCopy C:\\Tolvex\\tolvex.exe -> C:\\Tolvex\\tolvex.3.00.12.05.exe";
constexpr const char* kReplace =
    "FileCopy C:\\Tolvex\\tolvex.3.00.11.00.exe -> C:\\Tolvex\\tolvex.exe";

/// A machine on which 3.0.12.5 took the place of 3.0.11.0 in an earlier run, and is still the build
/// on the server.
class GoBackButton : public CheckTest {
protected:
    GoBackButton() {
        shared.OfferBackups = true;
        world.AddFile("tolvex.exe", installed);
        world.AddFile("tolvex.3.00.11.00.exe", backup);
        Stage("3.0.12.5", 250000, serverTime);
        Offer(250000);
    }

    /// The check finds nothing to do.
    void ReachIdle() {
        RunCheck();
        ASSERT_TRUE(Window().cmdGoBack.Enabled);
        world.trace.Clear();
    }

    void Press() { world.Click(Window(), Window().cmdGoBack); }

    void AnswerQuestion(MsgBoxAnswer answer = MsgBoxAnswer::kYes) {
        world.user.Answer(kQuestion, answer);
    }

    void RunProgram(std::int32_t refused) {
        world.desktop.push_back(
            {0x500, "q-Tolvex.exe", "q-Tolvex.exe", 0, false,
             [refused](std::uint32_t message) { return message == 0x0010 ? refused : 0; }});
    }

    /// The box that says why, and nothing has changed.
    void ExpectRefused(const std::string& reason) {
        EXPECT_TRUE(world.trace.Contains(
            Box("Go Back Error!\r\n\r\n" + reason + "\r\ntolvex.exe not changed.", 16)));
        EXPECT_TRUE(Content("tolvex.exe") == installed);
        EXPECT_TRUE(Content("tolvex.3.00.11.00.exe") == backup);
        EXPECT_TRUE(Window().cmdGoBack.Visible && Window().cmdGoBack.Enabled);
        EXPECT_EQ(world.focus, "cmdClose");
    }

    const std::string installed = Build("3.0.12.5", 250000);
    const std::string backup = Build("3.0.11.0", 240000);
};

TEST_F(GoBackButton, WithoutTheKeyIsHiddenAndNobodyLooksForBackups) {
    shared.OfferBackups = false;
    RunCheck();
    EXPECT_FALSE(Window().cmdGoBack.Visible);
    EXPECT_TRUE(world.trace.StartingWith("FilesIn").empty());
    EXPECT_TRUE(world.trace.StartingWith("cmdGoBack").empty());
}

TEST_F(GoBackButton, WithoutABackupLeavesNoTrace) {
    world.disk.Remove(world.PathOf("tolvex.3.00.11.00.exe"));
    RunCheck();
    EXPECT_FALSE(Window().cmdGoBack.Visible);
    EXPECT_TRUE(world.trace.StartingWith("cmdGoBack").empty());
}

TEST_F(GoBackButton, IsShownWithTheWindowAndOpensWhenTheCheckIsOver) {
    bool during = true;
    world.When([this] { return Window().headerProbe; },
               [&] { during = Window().cmdGoBack.Enabled; });
    RunCheck();
    EXPECT_TRUE(InOrder(world.trace.Lines(), {"cmdGoBack.Visible = True", "frmSwiftPatch.Show"}));
    EXPECT_FALSE(during);
    EXPECT_TRUE(Window().cmdGoBack.Enabled);
}

TEST_F(GoBackButton, OpensWithoutAConnectionToo) {
    headless::Reply lost;
    lost.failure = error_number::kNoConnection;
    world.network.Answer(Head(kNewBuild), lost);
    world.network.Answer(Head(kLicence), lost);
    world.user.AtDialog("frmRunning", [this](Form& form) {
        EXPECT_FALSE(Window().cmdGoBack.Enabled);
        form.Hide();
    });
    RunCheck();
    EXPECT_TRUE(Window().cmdGoBack.Enabled);
    AnswerQuestion();
    Press();
    EXPECT_TRUE(Content("tolvex.exe") == backup);
}

TEST_F(GoBackButton, IsClosedWhileABuildComesIn) {
    Publish(Build("3.0.13.0", 260000), "Wed, 11 Mar 2026 10:00:00 GMT");
    int looks = 0;
    world.inEachYield = [&] {
        if (Window().downloadMode == DownloadMode::kBuild && Window().Inet1.StillExecuting()) {
            ++looks;
            EXPECT_FALSE(Window().cmdGoBack.Enabled);
        }
    };
    RunCheck();
    world.inEachYield = nullptr;
    EXPECT_GT(looks, 5);
    EXPECT_TRUE(Window().cmdInstall.Enabled);
    EXPECT_TRUE(Window().cmdGoBack.Enabled);
}

TEST_F(GoBackButton, IsClosedDuringAnInstallAndGoneAfterIt) {
    Publish(Build("3.0.13.0", 260000), "Wed, 11 Mar 2026 10:00:00 GMT");
    RunCheck();
    world.user.Answer("A backup file", MsgBoxAnswer::kOk,
                      [this] { EXPECT_FALSE(Window().cmdGoBack.Enabled); });
    world.Click(Window(), Window().cmdInstall);
    EXPECT_TRUE(Content("tolvex.exe") == Build("3.0.13.0", 260000));
    EXPECT_FALSE(Window().cmdGoBack.Visible);
}

TEST_F(GoBackButton, IsClosedFromTheRetryToTheEndOfItsCheck) {
    ReachIdle();
    Window().cmdRetry.Visible = true;
    world.Click(Window(), Window().cmdRetry);
    EXPECT_TRUE(Window().tmrCheckVersion.Enabled);
    EXPECT_FALSE(Window().cmdGoBack.Enabled);
    world.PumpFor(60000);
    EXPECT_TRUE(Window().cmdGoBack.Enabled);
}

TEST_F(GoBackButton, AnsweredNoChangesNothingAndPutsTheKeyboardOnTheNextStep) {
    ReachIdle();
    AnswerQuestion(MsgBoxAnswer::kNo);
    Press();
    EXPECT_EQ(Joined(Steps()), Joined({"cmdGoBack.Enabled = False", "FilesIn C:\\Tolvex",
                                       Box(kQuestion, 4 + 32, "No"), "cmdGoBack.Enabled = True"}));
    EXPECT_EQ(world.focus, "cmdClose");
}

TEST_F(GoBackButton, KeepsTheInstalledBuildThenReplacesItThenReports) {
    ReachIdle();
    AnswerQuestion();
    Press();
    EXPECT_EQ(
        Joined(Steps()),
        Joined({"cmdGoBack.Enabled = False", "FilesIn C:\\Tolvex", Box(kQuestion, 4 + 32, "Yes"),
                "EnumWindows", kKeep, "Lock C:\\Tolvex\\tolvex.3.00.11.00.exe", kReplace,
                "cmdGoBack.Visible = False", "fraMessages.Visible = True",
                Set("lblAnimationMsg.Caption", "You are back at version 3.00.11.00.")}));
    EXPECT_TRUE(Content("tolvex.exe") == backup);
    EXPECT_TRUE(Content("tolvex.3.00.11.00.exe") == backup);
    EXPECT_TRUE(Content("tolvex.3.00.12.05.exe") == installed);
    EXPECT_TRUE(Content("tolvex30.exe") == installed);
    EXPECT_EQ(world.focus, "cmdClose");
}

TEST_F(GoBackButton, CanBePressedOnceOnly) {
    world.AddFile("tolvex.3.00.10.00.exe", Build("3.0.10.0", 240000));
    ReachIdle();
    AnswerQuestion();
    Press();
    world.trace.Clear();
    Press();
    EXPECT_EQ(Joined(Steps()), "");
    EXPECT_TRUE(Content("tolvex.exe") == backup);
}

TEST_F(GoBackButton, LeavesAStagedBuildOnOffer) {
    Publish(Build("3.0.13.0", 260000), "Wed, 11 Mar 2026 10:00:00 GMT");
    RunCheck();
    AnswerQuestion();
    Press();
    EXPECT_TRUE(Content("tolvex.exe") == backup);
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "Click on Install Button.");
    EXPECT_EQ(world.focus, "cmdInstall");
    world.Click(Window(), Window().cmdInstall);
    EXPECT_TRUE(Content("tolvex.exe") == Build("3.0.13.0", 260000));
}

TEST_F(GoBackButton, AsksForTheRunningProgramAsAnInstallDoes) {
    ReachIdle();
    RunProgram(0);
    AnswerQuestion();
    world.user.Answer("q-Tolvex.exe Detected Running", MsgBoxAnswer::kYes,
                      [this] { EXPECT_FALSE(Window().cmdGoBack.Enabled); });
    world.After(500, [this] { EXPECT_FALSE(Window().cmdGoBack.Enabled); });
    Press();
    EXPECT_TRUE(Content("tolvex.exe") == backup);
}

TEST_F(GoBackButton, WhileTheProgramStaysRunningChangesNothing) {
    ReachIdle();
    RunProgram(1);
    AnswerQuestion();
    world.user.Answer("q-Tolvex.exe Detected Running", MsgBoxAnswer::kYes);
    world.user.Answer("Go Back Error!");
    Press();
    ExpectRefused("Cannot go back while Tolvex is still running.");
    EXPECT_TRUE(world.trace.StartingWith("FileCopy").empty());
}

TEST_F(GoBackButton, PressOfInstallMeanwhileIsTheLaterWish) {
    Publish(Build("3.0.13.0", 260000), "Wed, 11 Mar 2026 10:00:00 GMT");
    RunCheck();
    RunProgram(0);
    AnswerQuestion();
    world.user.Answer("q-Tolvex.exe Detected Running", MsgBoxAnswer::kYes);
    world.user.Answer("A backup file");
    world.After(1000, [this] {
        world.desktop.clear();
        world.Click(Window(), Window().cmdInstall);
    });
    Press();
    EXPECT_TRUE(Content("tolvex.exe") == Build("3.0.13.0", 260000));
    EXPECT_EQ(world.trace.Count(kReplace), 0U);
}

TEST_F(GoBackButton, PressOfRetryMeanwhileIsTheLaterWish) {
    ReachIdle();
    Window().cmdRetry.Visible = true;
    RunProgram(0);
    AnswerQuestion();
    world.user.Answer("q-Tolvex.exe Detected Running", MsgBoxAnswer::kYes);
    world.After(1000, [this] { world.Click(Window(), Window().cmdRetry); });
    Press();
    EXPECT_TRUE(Content("tolvex.exe") == installed);
    world.PumpFor(60000);
    EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(),
              "You are running the latest version of q-tolvex");
    EXPECT_TRUE(Window().cmdGoBack.Enabled);
}

TEST_F(GoBackButton, EndOfTheRunMeanwhileChangesNothing) {
    ReachIdle();
    RunProgram(0);
    AnswerQuestion();
    world.user.Answer("q-Tolvex.exe Detected Running", MsgBoxAnswer::kYes);
    world.After(1000, [this] { world.Close(Window()); });
    Press();
    EXPECT_TRUE(world.RunOver());
    EXPECT_TRUE(Content("tolvex.exe") == installed);
}

TEST_F(GoBackButton, WithoutRoomForTheInstalledBuildChangesNothing) {
    ReachIdle();
    world.disk.Fail("FileCopy", error_number::kDiskFull);
    AnswerQuestion();
    world.user.Answer("Go Back Error!");
    Press();
    ExpectRefused("tolvex.exe backup File Copy Error: 61\r\nDisk full");
    EXPECT_EQ(world.trace.Count(kReplace), 0U);
}

TEST_F(GoBackButton, OverAHeldProgramChangesNothing) {
    ReachIdle();
    world.disk.Find(world.PathOf("tolvex.exe"))->held = true;
    AnswerQuestion();
    world.user.Answer("Go Back Error!");
    Press();
    ExpectRefused("tolvex.3.00.11.00.exe to tolvex.exe File Copy Error: 70\r\nPermission denied");
    EXPECT_TRUE(Content("tolvex.3.00.12.05.exe") == installed);
}

TEST_F(GoBackButton, ToABackupThatWentMeanwhileChangesNothing) {
    ReachIdle();
    world.disk.Find(world.PathOf("tolvex.3.00.11.00.exe"))->cutOff = true;
    world.user.Answer("Go Back Error!");
    Press();
    ExpectRefused("There is no earlier version of tolvex to go back to.");
}

TEST_F(GoBackButton, ToABackupThatIsDamagedWhileItIsAskedForChangesNothing) {
    ReachIdle();
    world.user.Answer(kQuestion, MsgBoxAnswer::kYes, [this] {
        world.disk.Find(world.PathOf("tolvex.3.00.11.00.exe"))->cutOff = true;
    });
    world.user.Answer("Go Back Error!");
    Press();
    ExpectRefused("tolvex.3.00.11.00.exe to tolvex.exe File Copy Error: 53\r\nFile not found");
}

TEST_F(GoBackButton, ShowsItsReportWhereTheCheckHasHiddenTheFrame) {
    ReachIdle();
    Window().fraMessages.Visible = false;
    AnswerQuestion();
    Press();
    EXPECT_TRUE(Window().fraMessages.Visible);
}

TEST_F(GoBackButton, NeedsNoSignatureWhereBuildsHaveToBeSigned) {
    shared.SigningKeys = "";
    ReachIdle();
    AnswerQuestion();
    Press();
    EXPECT_TRUE(Content("tolvex.exe") == backup);
}

/// A machine on which somebody went back from 3.0.12.5 in an earlier run.
class AfterGoingBack : public GoBackButton {
protected:
    AfterGoingBack() {
        world.AddFile("tolvex.exe", backup);
        world.AddFile("tolvex.3.00.12.05.exe", installed);
        shared.InstallAtOnce = true;
    }

    void ExpectLeftToThePerson() {
        EXPECT_TRUE(Content("tolvex.exe") == backup);
        EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(),
                  "You went back from version 3.00.12.05.\r\n"
                  "It is installed only when you press Install.");
        EXPECT_EQ(Window().lblStatus.Caption.Get(), "Click on Install Button.");
        EXPECT_TRUE(Window().cmdInstall.Visible && Window().cmdInstall.Enabled);
        EXPECT_EQ(world.focus, "cmdInstall");
    }
};

TEST_F(AfterGoingBack, StagedBuildIsNotInstalledAtOnce) {
    RunCheck();
    ExpectLeftToThePerson();
}

TEST_F(AfterGoingBack, FetchedBuildIsNotInstalledAtOnce) {
    Publish(installed, "Wed, 11 Mar 2026 10:00:00 GMT");
    RunCheck();
    ExpectLeftToThePerson();
}

TEST_F(AfterGoingBack, PressOfInstallGoesForwardAgain) {
    RunCheck();
    world.Click(Window(), Window().cmdInstall);
    EXPECT_TRUE(Content("tolvex.exe") == installed);
    EXPECT_TRUE(Content("tolvex.3.00.11.00.exe") == backup);
}

TEST_F(AfterGoingBack, ABuildNewerThanTheOneGoneBackFromIsInstalledAtOnce) {
    Publish(Build("3.0.13.0", 260000), "Wed, 11 Mar 2026 10:00:00 GMT");
    RunCheck();
    EXPECT_TRUE(Content("tolvex.exe") == Build("3.0.13.0", 260000));
}

TEST_F(AfterGoingBack, WithoutTheKeyItIsInstalledAtOnceAgain) {
    shared.OfferBackups = false;
    RunCheck();
    EXPECT_TRUE(Content("tolvex.exe") == installed);
    EXPECT_TRUE(world.trace.StartingWith("cmdGoBack").empty());
}

}  // namespace
}  // namespace swiftpatch
