#include "unattended/unattended_run.h"

#include "install/frmRunning.h"
#include "runtime/events.h"
#include "shared/shared_state.h"
#include "unit/check_support.h"

namespace swiftpatch {
namespace {

/// The person of the machine in memory is the attendant; what the program shows, it looks at when
/// it is told to.
class UnattendedRunTest : public CheckTest {
protected:
    UnattendedRun& Attend(const CommandLine& line = {}) {
        run_.emplace(line, reporter_);
        world.user.onAnyBox = [this](const std::string& text, int style, const std::string& title) {
            return run_->Answer({kMessageBox, title, text, style});
        };
        world.user.onAnyDialog = [this](Form& form) {
            auto& dialog = static_cast<frmRunning&>(form);
            run_->Answer({form.Name(), form.Caption, dialog.lblWarning.Caption});
            dialog.cmdExit.RaiseClick();
        };
        return *run_;
    }

    /// Runs the check, and lets the attendant act until the run is over.
    ExitStatus RunToTheEnd(const CommandLine& line = {}) {
        Attend(line);
        RunCheck();
        for (int rests = 0; rests < 3 && !world.RunOver(); ++rests) {
            world.Dispatch([this] { run_->Rest(); });
            world.PumpFor(5000);
        }
        EXPECT_TRUE(world.RunOver());
        return run_->Status();
    }

    std::string written_;
    Reporter reporter_{
        {[this](std::string_view text) { written_ += text; },
         [](std::string_view text) { return std::u16string(text.begin(), text.end()); }, false},
        Reporter::Form::kText,
        false};
    std::optional<UnattendedRun> run_;
};

TEST_F(UnattendedRunTest, InstallsWhatIsOfferedAndStartsNothing) {
    Publish(headless::Build("3.0.12.5", 250000));
    EXPECT_EQ(RunToTheEnd(), ExitStatus::kInstalled);
    EXPECT_EQ(Content("tolvex.exe"), headless::Build("3.0.12.5", 250000));
    EXPECT_TRUE(world.trace.StartingWith("ShellExecute").empty());
}

TEST_F(UnattendedRunTest, WithNothingNewHasNothingToDo) {
    Publish(headless::Build("3.0.11.0", 210000));
    Stage("3.0.11.0", 210000, serverTime);
    EXPECT_EQ(RunToTheEnd(), ExitStatus::kNothingToDo);
}

TEST_F(UnattendedRunTest, ADownloadThatIsNoNewerIsNothingToDo) {
    Publish(headless::Build("2.9.0.0", 250000));
    EXPECT_EQ(RunToTheEnd(), ExitStatus::kNothingToDo);
}

TEST_F(UnattendedRunTest, WithoutAnAnswerHasNoConnection) {
    headless::Reply nobody;
    nobody.failure = error_number::kNoConnection;
    world.network.Answer(Head(kNewBuild), nobody);
    world.network.Answer(Head(kLicence), nobody);
    EXPECT_EQ(RunToTheEnd(), ExitStatus::kNoConnection);
}

TEST_F(UnattendedRunTest, ARequestThatFailsWithoutAWordIsNoSuccess) {
    Offer(250000);
    headless::Reply lost;
    lost.failure = error_number::kNoConnection;
    world.network.Answer(Get(kNewBuild), lost);
    EXPECT_EQ(RunToTheEnd(), ExitStatus::kNoConnection);
}

TEST_F(UnattendedRunTest, CheckOfAStagedBuildLeavesItAlone) {
    shared.InstallAtOnce = false;
    Offer(250000);
    Stage("3.0.12.5", 250000, serverTime);
    EXPECT_EQ(RunToTheEnd({.check = true}), ExitStatus::kReady);
    EXPECT_EQ(Content("tolvex.exe"), headless::Build("3.0.11.0", 210000));
}

TEST_F(UnattendedRunTest, CheckMayNotRequestTheBuildButItsSignature) {
    UnattendedRun& run = Attend({.check = true});
    const std::string build = shared.ServerDownloadPath + "tolvex30.exe";
    EXPECT_TRUE(run.MayRequest(build, "HEAD"));
    EXPECT_TRUE(run.MayRequest(build + ".minisig", "GET"));
    EXPECT_TRUE(run.MayRequest("", "QUIT"));
    EXPECT_FALSE(run.MayRequest(build, "GET"));
    EXPECT_EQ(run.Status(), ExitStatus::kReady);
}

TEST_F(UnattendedRunTest, MayRequestTheBuild) {
    EXPECT_TRUE(Attend().MayRequest(shared.ServerDownloadPath + "tolvex30.exe", "GET"));
}

TEST_F(UnattendedRunTest, WhatACheckMayNotDeleteCountsAsGone) {
    const std::string file = world.PathOf("tolvex30.exe");
    UnattendedRun& run = Attend({.check = true});
    EXPECT_TRUE(run.IsThere(file, true));
    EXPECT_FALSE(run.MayDelete(file));
    EXPECT_FALSE(run.IsThere(file, true));
}

TEST_F(UnattendedRunTest, MayDelete) {
    const std::string file = world.PathOf("tolvex30.exe");
    UnattendedRun& run = Attend();
    EXPECT_TRUE(run.MayDelete(file));
    EXPECT_TRUE(run.IsThere(file, true));
    EXPECT_FALSE(run.IsThere(file, false));
}

TEST_F(UnattendedRunTest, ForACheckTheAnimationIsThere) {
    EXPECT_TRUE(Attend({.check = true}).IsThere(world.PathOf("filecopy.avi"), false));
    EXPECT_FALSE(Attend().IsThere(world.PathOf("filecopy.avi"), false));
}

TEST_F(UnattendedRunTest, CheckInstallsNothingWhateverTheDataFileSays) {
    UnattendedRun& run = Attend({.check = true});
    shared.InstallAtOnce = true;
    run.Loads(Window());
    EXPECT_FALSE(shared.InstallAtOnce);
}

TEST_F(UnattendedRunTest, TellsTheProgramToCloseOnlyWhereItMayAndOnceThereIsSomethingToInstall) {
    LoadWindow();
    EXPECT_FALSE(Attend({.closeProgram = true}).MaySend(5));
    Window().cmdInstall.Enabled = true;
    EXPECT_FALSE(Attend().MaySend(5));
    EXPECT_TRUE(Attend({.closeProgram = true}).MaySend(5));
}

/// A machine on which 3.0.12.5 took the place of 3.0.11.0.
class UnattendedWayBack : public UnattendedRunTest {
protected:
    UnattendedWayBack() {
        world.AddFile("tolvex.exe", installed);
        world.AddFile("tolvex.3.00.11.00.exe", backup);
        Offer(250000);
    }

    /// In an earlier run.
    void HaveGoneBack() {
        shared.OfferBackups = true;
        world.AddFile("tolvex.exe", backup);
        world.AddFile("tolvex.3.00.12.05.exe", installed);
        Stage("3.0.12.5", 250000, serverTime);
    }

    ExitStatus GoBack(bool closeProgram = false) {
        UnattendedRun& run = Attend({.closeProgram = closeProgram, .goBack = true});
        run.Loads(Window());
        LoadWindow();
        world.Dispatch([this, &run] { run.Saw(Window().tmrCheckVersion, PropertyId::kEnabled); });
        for (int rests = 0; rests < 3 && !world.RunOver(); ++rests) {
            world.Dispatch([&run] { run.Rest(); });
            world.PumpFor(5000);
        }
        EXPECT_TRUE(world.RunOver());
        EXPECT_FALSE(Requested(Head(kNewBuild))) << "the check has begun";
        return run.Status();
    }

    const std::string installed = headless::Build("3.0.12.5", 250000);
    const std::string backup = headless::Build("3.0.11.0", 240000);
};

TEST_F(UnattendedWayBack, PutsTheBackupInPlaceAndKeepsTheWayForward) {
    EXPECT_EQ(GoBack(), ExitStatus::kInstalled);
    EXPECT_TRUE(Content("tolvex.exe") == backup);
    EXPECT_TRUE(Content("tolvex.3.00.12.05.exe") == installed);
    EXPECT_EQ(written_.find("Confirm Exit"), std::string::npos) << written_;
}

TEST_F(UnattendedWayBack, WithoutABackupHasNothingToDo) {
    world.disk.Remove(world.PathOf("tolvex.3.00.11.00.exe"));
    EXPECT_EQ(GoBack(), ExitStatus::kNothingToDo);
    EXPECT_TRUE(Content("tolvex.exe") == installed);
}

TEST_F(UnattendedWayBack, LeavesARunningProgramAlone) {
    world.desktop.push_back({0x500, "q-Tolvex.exe", "q-Tolvex.exe", 0, false, {}});
    EXPECT_EQ(GoBack(), ExitStatus::kProgramRunning);
    EXPECT_TRUE(Content("tolvex.exe") == installed);
}

TEST_F(UnattendedWayBack, MayCloseTheProgramOnceThereIsSomethingToGoBackTo) {
    UnattendedRun& run = Attend({.closeProgram = true, .goBack = true});
    LoadWindow();
    EXPECT_FALSE(run.MaySend(5));
    run.Answer({kMessageBox, "", "Go back from version 2 to version 1?", msgbox::kYesNo});
    EXPECT_TRUE(run.MaySend(5));
}

TEST_F(UnattendedWayBack, ToABuildOfTheSameLengthAndTimeIsOneToo) {
    world.AddFile("tolvex.3.00.11.00.exe", headless::Build("3.0.11.0", 250000));
    EXPECT_EQ(GoBack(), ExitStatus::kInstalled);
}

TEST_F(UnattendedWayBack, WithoutAProgramIsTheDisk) {
    world.disk.Remove(world.PathOf("tolvex.exe"));
    EXPECT_EQ(GoBack(), ExitStatus::kDisk);
}

TEST_F(UnattendedWayBack, ThatCannotBeCopiedIsTheDisk) {
    world.disk.Find(world.PathOf("tolvex.exe"))->held = true;
    EXPECT_EQ(GoBack(), ExitStatus::kDisk);
    EXPECT_TRUE(Content("tolvex.exe") == installed);
}

TEST_F(UnattendedWayBack, WhatWasGoneBackFromIsNotInstalledAgain) {
    HaveGoneBack();
    EXPECT_EQ(RunToTheEnd(), ExitStatus::kNothingToDo);
    EXPECT_TRUE(Content("tolvex.exe") == backup);
}

TEST_F(UnattendedWayBack, WhatWasGoneBackFromIsNotReadyEither) {
    HaveGoneBack();
    EXPECT_EQ(RunToTheEnd({.check = true}), ExitStatus::kNothingToDo);
}

TEST_F(UnattendedRunTest, AnswersAnUnknownQuestionSafelyAndSaysSo) {
    UnattendedRun& run = Attend();
    EXPECT_EQ(run.Answer({kMessageBox, "New", "Delete everything?", msgbox::kYesNo}),
              MsgBoxAnswer::kNo);
    EXPECT_EQ(written_, "[New] Delete everything? -> No\r\n");
}

TEST_F(UnattendedRunTest, AFailureOfTheAnimationIsNoFailureOfTheRun) {
    LoadWindow();
    Window().downloadMode = DownloadMode::kAnimation;
    Attend().Answer({"frmRunning", "Internet Connection Timeout", "Error # 35758"});
    EXPECT_EQ(run_->Status(), ExitStatus::kInternal) << "nothing is known of the run yet";
}

TEST_F(UnattendedRunTest, WithoutItsAnimationInstallsAllTheSame) {
    world.disk.Remove(world.PathOf("filecopy.avi"));
    Publish(headless::Build("3.0.12.5", 250000));
    world.network.Answer(Head(kAnimation), headless::HeaderReply("Content-Length: 5000\r\n"));
    headless::Reply lost;
    lost.failure = error_number::kRequestTimedOut;
    world.network.Answer(Get(kAnimation), lost);
    const ExitStatus status = RunToTheEnd();
    EXPECT_EQ(status, ExitStatus::kInstalled) << written_ << NameOf(status);
}

TEST_F(UnattendedRunTest, EndsATransferThatComesToNothing) {
    LoadWindow();
    UnattendedRun& run = Attend();
    world.Advance(9 * 60 * 1000);
    run.Look();
    EXPECT_FALSE(RunIsOver());
    world.Advance(2 * 60 * 1000);
    run.Look();
    EXPECT_TRUE(RunIsOver());
    EXPECT_EQ(run.Status(), ExitStatus::kTimedOut);
}

}  // namespace
}  // namespace swiftpatch
