#include "runtime/runtime_error.h"
#include "unit/check_support.h"

namespace swiftpatch {
namespace {

constexpr const char* kStart = "ShellExecute open C:\\Tolvex\\tolvex.exe 1";

std::string Question(const std::string& answer) {
    return Box("Download not finished.... \r\n\r\nAre you sure you want to exit this program?", 68,
               answer, "Confirm Exit");
}

class Exit : public WindowTest {
protected:
    Exit() {
        world.AddFile("tolvex.exe", headless::Build("3.0.11.0", 300));
        LoadWindow();
        Window().cmdClose.Enabled = true;
        world.trace.Clear();
    }

    void ExpectQuestion(MsgBoxAnswer answer) {
        Window().cmdClose.Enabled = false;
        world.trace.Clear();
        world.user.Answer("Download not finished....", answer);
    }
};

TEST_F(Exit, ByTheButtonStartsTheProgramWithoutAQuestion) {
    world.Click(Window(), Window().cmdClose);
    EXPECT_EQ(Joined(Steps()), Joined({kStart, "frmSwiftPatch.Destroy"}));
    EXPECT_TRUE(world.RunOver());
}

TEST_F(Exit, ByTheWindowStartsTheProgramWithoutAQuestion) {
    world.Close(Window());
    EXPECT_EQ(Joined(Steps()), Joined({kStart, "frmSwiftPatch.Destroy"}));
    EXPECT_TRUE(world.RunOver());
}

TEST_F(Exit, ByTheButtonsProcedureAsksWhileCloseIsDisabled) {
    ExpectQuestion(MsgBoxAnswer::kNo);
    world.Dispatch([this] { Window().cmdClose_Click(); });
    EXPECT_EQ(Joined(Steps()), Question("No"));
    EXPECT_FALSE(world.RunOver());
    EXPECT_TRUE(Window().Visible());
}

TEST_F(Exit, ByTheWindowAsksWhileCloseIsDisabled) {
    ExpectQuestion(MsgBoxAnswer::kNo);
    world.Close(Window());
    EXPECT_EQ(Joined(Steps()), Question("No"));
    EXPECT_FALSE(world.RunOver());
}

TEST_F(Exit, ByTheEndOfTheSessionAsksWhileCloseIsDisabled) {
    ExpectQuestion(MsgBoxAnswer::kNo);
    bool mayGo = true;
    world.Dispatch([&] { mayGo = Window().QueryUnload(); });
    EXPECT_FALSE(mayGo);
    EXPECT_EQ(Joined(Steps()), Question("No"));
    EXPECT_TRUE(Window().Visible());
}

TEST_F(Exit, ByTheEndOfTheSessionIsAskedOnce) {
    ExpectQuestion(MsgBoxAnswer::kYes);
    world.Dispatch([this] {
        EXPECT_TRUE(Window().QueryUnload());
        Window().UnloadUnasked();
    });
    EXPECT_EQ(Joined(Steps()), Joined({Question("Yes"), kStart, "frmSwiftPatch.Destroy"}));
    EXPECT_TRUE(world.RunOver());
}

TEST_F(Exit, WhileTheQuestionStandsIsNotAskedAgain) {
    Window().cmdClose.Enabled = false;
    world.user.Answer("Download not finished....", MsgBoxAnswer::kNo, [this] {
        world.Close(Window());
        EXPECT_FALSE(Window().QueryUnload());
    });
    world.Close(Window());
    EXPECT_EQ(world.trace.StartingWith("MsgBox").size(), 1U);
    EXPECT_FALSE(world.RunOver());
}

TEST_F(Exit, HoldsTheCheckBackWhileItAsks) {
    Window().cmdClose.Enabled = false;
    world.user.Answer("Download not finished....", MsgBoxAnswer::kNo, [this] {
        Window().tmrCheckVersion.Enabled = true;
        world.trace.Clear();
        for (int pump = 0; pump < 2000; ++pump) {
            world.Pump(headless::World::PumpKind::kResting);
        }
        EXPECT_EQ(Joined(Steps()), "");
        Window().tmrCheckVersion.Enabled = false;
    });
    world.Close(Window());
    EXPECT_EQ(world.network.Requests().size(), 0U);
}

TEST_F(Exit, WithoutAQuestionLeavesTheSessionFree) {
    bool mayGo = false;
    world.Dispatch([&] { mayGo = Window().QueryUnload(); });
    EXPECT_TRUE(mayGo);
    EXPECT_EQ(Joined(Steps()), "");
}

TEST_F(Exit, WithTheBoxUncheckedStartsNothing) {
    Window().chkRunTolvex.Value = CheckState::kUnchecked;
    world.Close(Window());
    EXPECT_TRUE(world.trace.StartingWith("ShellExecute").empty());
    EXPECT_TRUE(world.RunOver());
}

TEST_F(Exit, WithTheBoxGreyedStartsNothing) {
    Window().chkRunTolvex.Value = CheckState::kGrayed;
    world.Close(Window());
    EXPECT_TRUE(world.trace.StartingWith("ShellExecute").empty());
    EXPECT_TRUE(world.RunOver());
}

TEST_F(Exit, WithoutAProgramStartsNothingAndSaysNothing) {
    world.disk.Remove(world.PathOf("tolvex.exe"));
    world.Close(Window());
    EXPECT_EQ(Joined(Steps()), "frmSwiftPatch.Destroy");
    EXPECT_TRUE(world.RunOver());
}

TEST_F(Exit, WithAHiddenProgramStartsNothing) {
    world.disk.Find(world.PathOf("tolvex.exe"))->hidden = true;
    world.Close(Window());
    EXPECT_EQ(Joined(Steps()), "frmSwiftPatch.Destroy");
}

TEST_F(Exit, ThatFailsSaysSoAndEndsTheProgram) {
    world.disk.Fail("ShellExecute", error_number::kInvalidProcedureCall);
    world.user.Answer("Form_Unload()");
    world.Close(Window());
    EXPECT_EQ(Joined(Steps()),
              Joined({kStart,
                      Box("Error Number: 5\r\n\r\nInvalid procedure call or argument\r\n\r\n"
                          "Source: Form_Unload() (frmSwiftPatch)",
                          64),
                      "End"}));
    EXPECT_TRUE(world.RunOver());
}

TEST_F(Exit, CancelsTheTransferBeforeAnythingElse) {
    world.network.Answer(Get(kNewBuild), SilentReply());
    Window().Inet1.Execute(kNewBuild, "GET");
    world.disk.Fail("ShellExecute", error_number::kInvalidProcedureCall);
    world.user.Answer("Form_Unload()", MsgBoxAnswer::kOk,
                      [this] { EXPECT_FALSE(Window().Inet1.StillExecuting()); });
    EXPECT_TRUE(Window().Inet1.StillExecuting());
    world.Close(Window());
}

TEST_F(Exit, AfterAnInstallStartsTheNewProgram) {
    world.AddFile("tolvex30.exe", headless::Build("3.0.12.5", 400));
    Window().cmdInstall.Enabled = true;
    world.user.Answer("A backup file");
    world.Click(Window(), Window().cmdInstall);
    world.Click(Window(), Window().cmdClose);
    EXPECT_EQ(Content("tolvex.exe").size(), 400U);
    EXPECT_TRUE(InOrder(Steps(), {"cmdClose.Enabled = True", kStart, "frmSwiftPatch.Destroy"}));
}

class ExitDuringADownload : public CheckTest {
protected:
    /// Closes the window once a part of the body is on the disk.
    void RunAndClose(MsgBoxAnswer answer) {
        Publish(build, kServerDate);
        world.user.Answer("The file does not exist.");
        world.user.Answer("Download not finished....", answer);
        world.When([this] { return Content("tolvex30.exe").size() == 102400; },
                   [this] { world.Close(Window()); });
        RunCheck();
    }

    /// What the box's own loop does while it stands open.
    void PumpUnderTheBox(std::int64_t milliseconds) {
        const std::int64_t end = world.uptime + milliseconds;
        while (world.uptime < end) {
            world.Pump(headless::World::PumpKind::kResting);
        }
    }

    const std::string build = headless::Build("3.0.12.5", 250000);
};

TEST_F(ExitDuringADownload, AnsweredNoKeepsItGoingToItsEnd) {
    RunAndClose(MsgBoxAnswer::kNo);
    EXPECT_FALSE(world.RunOver());
    EXPECT_EQ(Content("tolvex30.exe"), build);
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "Click on Install Button.");
    EXPECT_TRUE(Window().cmdClose.Enabled);
}

TEST_F(ExitDuringADownload, AnsweredYesIsTheEndOfEverything) {
    RunAndClose(MsgBoxAnswer::kYes);
    EXPECT_TRUE(world.RunOver());
    EXPECT_EQ(Joined(StepsFrom(Question("Yes"))),
              Joined({Question("Yes"), kStart, "frmSwiftPatch.Destroy"}));
    EXPECT_EQ(Content("tolvex30.exe"), build.substr(0, 102400));
    EXPECT_EQ(world.network.Requests().size(), 4U);
}

TEST_F(ExitDuringADownload, HoldsTheTransferBackWhileItAsks) {
    Publish(build, kServerDate);
    world.user.Answer("The file does not exist.");
    bool yes = false;
    world.user.Answer("Download not finished....", MsgBoxAnswer::kYes, [&] {
        world.trace.Clear();
        PumpUnderTheBox(60000);
        EXPECT_EQ(Joined(Steps()), "");
        yes = true;
    });
    world.When([this] { return world.network.Requests().size() == 4; },
               [this] { world.Close(Window()); });
    RunCheck();
    EXPECT_TRUE(yes);
    EXPECT_TRUE(world.RunOver());
    EXPECT_EQ(world.disk.Find(world.PathOf("tolvex30.exe")), nullptr);
}

TEST_F(ExitDuringADownload, AnsweredNoAfterAWhileGoesOnWhereItStood) {
    Publish(build, kServerDate);
    world.user.Answer("The file does not exist.");
    world.user.Answer("Download not finished....", MsgBoxAnswer::kNo,
                      [this] { PumpUnderTheBox(60000); });
    world.When([this] { return world.network.Requests().size() == 4; },
               [this] { world.Close(Window()); });
    RunCheck();
    world.PumpFor(60000);
    EXPECT_FALSE(world.RunOver());
    EXPECT_EQ(Content("tolvex30.exe"), build);
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "Click on Install Button.");
}

TEST_F(ExitDuringADownload, DoesNotCountTheQuestionAsTheServersSilence) {
    Publish(build, kServerDate);
    world.user.Answer("The file does not exist.");
    world.user.Answer("Download not finished....", MsgBoxAnswer::kNo,
                      [this] { PumpUnderTheBox(60000); });
    world.When([this] { return Content("tolvex30.exe").size() == 102400; },
               [this] { world.Close(Window()); });
    RunCheck();
    world.PumpFor(60000);
    EXPECT_EQ(Content("tolvex30.exe"), build);
}

TEST_F(ExitDuringADownload, DuringAProbeMakesNoFurtherRequest) {
    Publish(build, kServerDate);
    world.user.Answer("Download not finished....", MsgBoxAnswer::kYes);
    world.When([this] { return world.network.Requests().size() == 2; },
               [this] { world.Close(Window()); });
    RunCheck();
    EXPECT_TRUE(world.RunOver());
    EXPECT_EQ(world.network.Requests().size(), 2U);
}

TEST_F(ExitDuringADownload, IsPossibleWithoutAQuestionOnceItIsIn) {
    Publish(build, kServerDate);
    world.user.Answer("The file does not exist.");
    RunCheck();
    world.Close(Window());
    EXPECT_TRUE(world.RunOver());
}

}  // namespace
}  // namespace swiftpatch
