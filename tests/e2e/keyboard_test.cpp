#include "e2e/keyboard.h"

#include "e2e/update_run.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kSoon{10000};
constexpr milliseconds kStage{40000};

class Keyboard : public UpdateRun {
protected:
    void Press(WORD key, Shift shift = Shift::kUp) { PressKey(*updater_, key, shift); }

    /// Presses Enter once the control has the keyboard.
    void Enter(const Control& control) {
        AwaitFocus(*updater_, control);
        Press(VK_RETURN);
    }

    void ConfirmBox(const std::string& text) {
        const Box box = updater_->AwaitMessageBox(kStage);
        EXPECT_NE(box.text.find(text), std::string::npos) << box.text;
        AwaitFocus(*updater_, box);
        Press(VK_RETURN);
        Await(
            "the end of the box", [&] { return IsWindowVisible(box.window) == 0; }, kSoon);
    }

    void AwaitMark(bool checked) {
        Await(
            "the check box", [&] { return updater_->Checked(kChkRunTolvex) == checked; }, kSoon);
    }
};

// Nobody moves the keyboard to the next step: it is there.
TEST_F(Keyboard, AloneIsEnoughForARunWithRetryAndInstall) {
    Publish("3.0.12.5");
    Reply broken = BuildReply("3.0.12.5");
    broken.end = BodyEnd::kClose;
    broken.endAfter = 100000;
    server_.Once("GET", kBuildTarget, broken);
    Install("3.0.11.0");
    StartToMainWindow();
    ConfirmBox("The file does not exist.");
    Enter(kFailureExit);
    Enter(kCmdRetry);
    ConfirmBox("The file is probably corrupt.");
    AwaitOffer();
    Enter(kCmdInstall);
    ConfirmBox("A backup file");
    AwaitFocus(*updater_, kCmdClose);

    // The failure has taken the mark off.
    Press(VK_TAB);
    AwaitFocus(*updater_, kChkRunTolvex);
    Press(VK_SPACE);
    AwaitMark(true);
    Press(VK_SPACE);
    AwaitMark(false);
    Press(VK_TAB, Shift::kDown);
    Enter(kCmdClose);
    updater_->AwaitEnd(kSoon);
    ExpectFiles({"created tolvex.3.00.11.00.exe", "changed tolvex.exe", "created tolvex30.exe"});
    EXPECT_EQ(folder_->Read("tolvex.exe"), Build("3.0.12.5"));
}

}  // namespace
}  // namespace swiftpatch::e2e
