#include "unit/check_support.h"

namespace swiftpatch {
namespace {

class UpdateCheckConnection : public CheckTest {
protected:
    UpdateCheckConnection() {
        Offer(250000);
        Stage("3.0.11.0", 250000, serverTime);
    }

    /// Runs the check once more, as a stage that enables the timer does.
    void RunAgain() {
        Window().tmrCheckVersion.Enabled = true;
        world.PumpFor(10000);
    }

    std::size_t Probes() const { return world.network.Requests().size(); }
};

TEST_F(UpdateCheckConnection, IsLookedForOnceARun) {
    RunCheck();
    EXPECT_EQ(Probes(), 3U);
    RunAgain();
    EXPECT_EQ(Probes(), 5U);
    EXPECT_EQ(world.trace.Count(
                  Set("lblAnimationMsg.Caption", "q-tolvex server\r\nconnection available.")),
              1U);
}

TEST_F(UpdateCheckConnection, IsLookedForAgainAfterRetry) {
    RunCheck();
    Window().cmdRetry.Visible = true;
    world.Click(Window(), Window().cmdRetry);
    world.PumpFor(10000);
    EXPECT_EQ(Probes(), 6U);
}

TEST_F(UpdateCheckConnection, CountsAsLookedForWhenItWasMissing) {
    world.machine.connected = false;
    world.network.Answer(Head(kLicence), LengthReply("4000"));
    world.user.AtDialog("frmRunning", [](Form& form) { form.Unload(); });
    RunCheck();
    EXPECT_TRUE(Window().connectivityDone);
    RunAgain();
    EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(),
              "You are running the latest version of q-tolvex");
}

TEST_F(UpdateCheckConnection, UsesTheControlsOwnTimeOutAndTheCheckFifteenSeconds) {
    const std::int32_t own = Window().Inet1.RequestTimeout;
    std::vector<std::int32_t> timeouts;
    for (std::size_t request = 1; request <= 3; ++request) {
        world.When([this, request] { return Probes() == request; },
                   [this, &timeouts] { timeouts.push_back(Window().Inet1.RequestTimeout); });
    }
    RunCheck();
    EXPECT_EQ(timeouts, (std::vector<std::int32_t>{own, 15, 15}));
    EXPECT_NE(own, 15);
}

TEST_F(UpdateCheckConnection, ShowsTheHourglassUntilTheCheckIsOver) {
    std::vector<MousePointer> pointers;
    for (std::size_t request = 1; request <= 3; ++request) {
        world.When([this, request] { return Probes() == request; },
                   [this, &pointers] { pointers.push_back(Window().Pointer); });
    }
    RunCheck();
    EXPECT_EQ(pointers, std::vector<MousePointer>(3, MousePointer::kHourglass));
    EXPECT_EQ(Window().Pointer.Get(), MousePointer::kDefault);
}

TEST_F(UpdateCheckConnection, MissingLeavesTheDefaultPointer) {
    world.machine.connected = false;
    world.network.Answer(Head(kLicence), LengthReply("4000"));
    world.user.AtDialog("frmRunning", [](Form& form) { form.Unload(); });
    RunCheck();
    EXPECT_EQ(Window().Pointer.Get(), MousePointer::kDefault);
    EXPECT_TRUE(Window().cmdClose.Enabled);
    EXPECT_FALSE(Window().tmrCheckVersion.Enabled);
}

class UpdateCheckFault : public CheckTest {
protected:
    UpdateCheckFault() {
        world.user.AtDialog("frmRunning", [](Form& form) { form.Unload(); });
    }

    void AnswerProbes(const headless::Reply& reply) {
        world.network.Answer(Head(kNewBuild), reply);
        world.network.Answer(Head(kLicence), reply);
    }
};

TEST_F(UpdateCheckFault, OfACertificateIsNoConnectionAndStandsInTheReport) {
    headless::Reply reply;
    reply.failure = error_number::kNoConnection;
    reply.fault = TransferFault::kCertificateExpired;
    AnswerProbes(reply);
    RunCheck();
    EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(),
              "No connection to the q-tolvex update server.");
    EXPECT_EQ(Window().txtDebug.Text.Get(),
              "The certificate of the update server has expired or is not valid yet. Please check "
              "the date of this computer, too.");
}

TEST_F(UpdateCheckFault, OfAProxyThatWantsALogonStandsInTheReport) {
    headless::Reply reply = Quiet(headless::HeaderReply("Content-Length: 500\r\n"));
    reply.status = 407;
    AnswerProbes(reply);
    RunCheck();
    EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(),
              "No connection to the q-tolvex update server.");
    EXPECT_EQ(Window().txtDebug.Text.Get(),
              "The proxy server wants a logon that this system does not have.");
}

TEST_F(UpdateCheckFault, ThatNobodyKnowsLeavesTheReportEmpty) {
    headless::Reply reply;
    reply.failure = error_number::kNoConnection;
    AnswerProbes(reply);
    RunCheck();
    EXPECT_EQ(Window().txtDebug.Text.Get(), "");
}

class UpdateCheckServerSize : public CheckTest {
protected:
    UpdateCheckServerSize() { world.network.Answer(Head(kLicence), LengthReply("4000")); }
};

TEST_F(UpdateCheckServerSize, Of79999BytesIsABadLink) {
    Offer(79999);
    Stage("3.0.11.0", 79999, serverTime);
    ExpectReport("Bad Download Link",
                 "The download link is invalid.\r\n\r\n"
                 "The link: tolvex.example/files/tolvex30.exe is not available.");
    RunCheck();
    EXPECT_EQ(world.network.Requests().size(), 3U);
}

TEST_F(UpdateCheckServerSize, Of80000BytesGoesOnToTheDates) {
    Offer(80000);
    Stage("3.0.11.0", 80000, serverTime);
    RunCheck();
    EXPECT_EQ(world.network.Requests().size(), 4U);
    EXPECT_EQ(Window().lblAnimationMsg.Caption.Get(),
              "You are running the latest version of q-tolvex");
}

TEST_F(UpdateCheckServerSize, ThatIsUnknownIsABadLink) {
    world.network.Answer(Head(kNewBuild), Quiet(headless::HeaderReply("")));
    ExpectReport("Bad Download Link",
                 "The download link is invalid.\r\n\r\n"
                 "The link: tolvex.example/files/tolvex30.exe is not available.");
    RunCheck();
    EXPECT_EQ(Window().check.serverSize, -1);
    EXPECT_EQ(Window().expectedSize, -1);
}

}  // namespace
}  // namespace swiftpatch
