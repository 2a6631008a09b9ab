#include "runtime/clock.h"
#include "shared/shared_state.h"
#include "unit/check_support.h"

namespace swiftpatch {
namespace {

class UpdateCheckSteps : public CheckTest {
protected:
    /// What every check begins with, up to the question whether there is a connection.
    static std::string Announced() {
        return Joined({"frmSwiftPatch.MousePointer = 11", "tmrCheckVersion.Enabled = False",
                       Set("lblAnimationMsg.Caption", "checking connection to q-tolvex servers..."),
                       "lblAnimationMsg.Refresh"});
    }

    /// The same up to the first fact about the server's build.
    static std::string Connected() {
        return Joined({Announced(), "Request HEAD http://tolvex.example/files/tolvex30.exe",
                       Set("lblAnimationMsg.Caption", "q-tolvex server\r\nconnection available.")});
    }

    /// The same up to the report.
    static std::string Probed() {
        return Joined({Connected(), "Request HEAD http://tolvex.example/files/tolvex30.exe",
                       "Request HEAD http://tolvex.example/files/tolvex30.exe"});
    }

    std::string Reported() { return Set("txtDebug.Text", Window().txtDebug.Text.Get()); }
};

TEST_F(UpdateCheckSteps, OfTheLatestVersion) {
    Offer(250000);
    Stage("3.0.11.0", 250000, serverTime);

    RunCheck();

    EXPECT_EQ(
        Joined(CheckSteps()),
        Joined({Probed(), Reported(), "tmrCheckVersion.Enabled = False",
                Set("lblAnimationMsg.Caption", "You are running the latest version of q-tolvex"),
                AnimationStopped(), "cmdInstall.Visible = False", "ProgressBar1.Visible = False",
                Set("lblStatus.Caption", ""), "frmSwiftPatch.MousePointer = 0",
                "cmdClose.Enabled = True"}));
}

TEST_F(UpdateCheckSteps, OfABuildThatIsReadyToInstall) {
    Offer(250000);
    Stage("3.0.12.5", 250000, serverTime);

    RunCheck();

    EXPECT_EQ(
        Joined(CheckSteps()),
        Joined(
            {Probed(), Reported(), "tmrCheckVersion.Enabled = False",
             Set("lblAnimationMsg.Caption", "You have downloaded the latest version of q-tolvex"),
             Set("lblTolvexVersion.Caption", "q-tolvex Version available to install: 3.00.12.05"),
             "lblTolvexVersion.Visible = True", AnimationStopped(), "cmdInstall.Visible = True",
             "cmdInstall.Enabled = True", Set("lblStatus.Caption", "Click on Install Button."),
             "frmSwiftPatch.MousePointer = 0", "cmdClose.Enabled = True"}));
}

TEST_F(UpdateCheckSteps, OfADownload) {
    Offer(250000);
    Stage("3.0.12.5", 250000, serverTime - std::chrono::hours(1));
    world.network.Answer(Get(kNewBuild), SilentReply());

    RunCheck(5000);

    EXPECT_EQ(Joined(CheckSteps()),
              Joined({Probed(), Reported(), Set("lblStatus.Caption", "0 % download completed"),
                      "Request GET http://tolvex.example/files/tolvex30.exe",
                      "frmSwiftPatch.MousePointer = 0"}));
    EXPECT_EQ(Window().downloadMode, DownloadMode::kBuild);
    EXPECT_EQ(Window().expectedSize, 250000);
}

TEST_F(UpdateCheckSteps, OfAMissingConnection) {
    world.machine.connected = false;
    world.network.Answer(Head(kLicence), LengthReply("4000"));
    ExpectReport("No Connection",
                 "\r\nNo connection to the q-tolvex update server.\r\n\r\n"
                 "Please check your internet connection and try again later.");

    RunCheck();

    const std::vector<std::string> steps = CheckSteps();
    EXPECT_TRUE(Joined(steps).starts_with(
        Joined({Announced(), "Request HEAD http://tolvex.example/files/LICENSE.TXT",
                Set("lblAnimationMsg.Caption", "No connection to the q-tolvex update server."),
                AnimationStopped()})))
        << Joined(steps);
    EXPECT_EQ(steps.back(), "chkRunTolvex.Value = 0");
    EXPECT_EQ(world.network.Requests().size(), 1U);
    EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(),
              "No connection to the q-tolvex update server.");
}

TEST_F(UpdateCheckSteps, OfABadDownloadLink) {
    Offer(79999);
    world.network.Answer(Head(kLicence), LengthReply("4000"));
    ExpectReport("Bad Download Link",
                 "The download link is invalid.\r\n\r\n"
                 "The link: tolvex.example/files/tolvex30.exe is not available.");

    RunCheck();

    EXPECT_TRUE(Joined(CheckSteps())
                    .ends_with(Joined(
                        {"chkRunTolvex.Value = 0", AnimationStopped(), "cmdClose.Enabled = True"})))
        << Joined(CheckSteps());
    EXPECT_EQ(Window().Pointer.Get(), MousePointer::kDefault);
}

TEST_F(UpdateCheckSteps, YieldBeforeTheFirstWait) {
    Offer(250000);
    Stage("3.0.11.0", 250000, serverTime);

    RunCheck();

    EXPECT_TRUE(
        InOrder(world.trace.Lines(), {"lblAnimationMsg.Refresh", "DoEvents", "DoEventsResting",
                                      "Request HEAD http://tolvex.example/files/tolvex30.exe"}));
}

TEST_F(UpdateCheckSteps, WaitASecondBeforeTheFirstRequest) {
    Offer(250000);
    Stage("3.0.11.0", 250000, serverTime);
    DateTime asked{};
    world.When([this] { return !world.network.Requests().empty(); }, [&asked] { asked = Now(); });

    RunCheck();

    EXPECT_EQ(asked, MakeDateTime({2026, 3, 10, 12, 0, 2}));
}

TEST_F(UpdateCheckSteps, WaitTwoSecondsBeforeAMissingConnectionIsReported) {
    world.machine.connected = false;
    world.network.Answer(Head(kLicence), LengthReply("4000"));
    DateTime told{};
    world.user.AtDialog("frmRunning", [&told](Form& form) {
        told = Now();
        form.Unload();
    });

    RunCheck();

    EXPECT_EQ(told, MakeDateTime({2026, 3, 10, 12, 0, 5}));
}

TEST_F(UpdateCheckSteps, KeepTheAddressOfTheNewBuild) {
    shared.ServerDownloadPath = "http://tolvex.example/files/";
    Offer(250000);
    Stage("3.0.11.0", 250000, serverTime);

    RunCheck();

    EXPECT_EQ(Window().check.serverUrl, "http://tolvex.example/files/tolvex30.exe");
    EXPECT_EQ(Window().check.serverSize, 250000);
    EXPECT_EQ(Window().check.serverDateText, "10 Mar 2026 10:00:00");
}

TEST_F(UpdateCheckSteps, RunOnce) {
    Offer(250000);
    Stage("3.0.11.0", 250000, serverTime);

    RunCheck(600000);

    EXPECT_EQ(world.trace.Count("frmSwiftPatch.MousePointer = 11"), 1U);
}

}  // namespace
}  // namespace swiftpatch
