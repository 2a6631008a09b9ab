#include "install/frmRunning.h"
#include "unit/check_support.h"

namespace swiftpatch {
namespace {

// Where the keyboard is when a stage leaves the next step to the user.
class frmSwiftPatchNextStep : public CheckTest {
protected:
    void Confirm() {
        world.user.AtDialog("frmRunning", [this](Form& form) {
            world.Click(form, static_cast<frmRunning&>(form).cmdExit);
        });
    }

    void Report(const std::string& text) {
        Confirm();
        std::string message = text;
        world.Dispatch([&] { Window().error_Message(message, message_style::kText, "Title"); });
    }

    void OfferStagedBuild() {
        Offer(250000);
        Stage("3.0.12.5", 250000, serverTime + std::chrono::hours(24));
        RunCheck();
        ASSERT_EQ(Window().lblStatus.Caption.Get(), "Click on Install Button.");
    }
};

TEST_F(frmSwiftPatchNextStep, IsInstallWhenAStagedBuildIsOffered) {
    OfferStagedBuild();
    EXPECT_EQ(world.focus, "cmdInstall");
}

TEST_F(frmSwiftPatchNextStep, IsInstallWhenADownloadedBuildIsOffered) {
    Publish(headless::Build("3.0.12.5", 250000));
    world.user.Answer("The file does not exist.");
    RunCheck();
    ASSERT_EQ(Window().lblStatus.Caption.Get(), "Click on Install Button.");
    EXPECT_EQ(world.focus, "cmdInstall");
}

TEST_F(frmSwiftPatchNextStep, IsCloseAfterTheInstall) {
    OfferStagedBuild();
    world.user.Answer("A backup file");
    world.Click(Window(), Window().cmdInstall);
    EXPECT_EQ(world.focus, "cmdClose");
}

TEST_F(frmSwiftPatchNextStep, IsCloseWhenNothingHasToBeDone) {
    Offer(210000);
    Stage("3.0.11.0", 210000, serverTime + std::chrono::hours(24));
    RunCheck();
    EXPECT_FALSE(Window().cmdInstall.Visible);
    EXPECT_EQ(world.focus, "cmdClose");
}

TEST_F(frmSwiftPatchNextStep, IsRetryAfterATimeOut) {
    LoadWindow();
    Report("Error # 35758");
    EXPECT_EQ(world.focus, "cmdRetry");
}

TEST_F(frmSwiftPatchNextStep, IsCloseAfterAnotherFailure) {
    LoadWindow();
    Report("It failed.");
    EXPECT_EQ(world.focus, "cmdClose");
}

}  // namespace
}  // namespace swiftpatch
