#include "install/frmRunning.h"
#include "runtime/runtime_error.h"
#include "unit/program_test.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class frmSwiftPatchErrorMessage : public ProgramTest {
protected:
    frmSwiftPatchErrorMessage() {
        world.Dispatch([this] { Window().Show(); });
        world.trace.Clear();
    }

    /// The person reads the dialog and leaves it by its button.
    void AnswerDialog(std::function<void()> whileOpen = {}) {
        world.user.AtDialog("frmRunning", [this, whileOpen](Form& form) {
            auto& dialog = static_cast<frmRunning&>(form);
            text_ = dialog.lblWarning.Caption;
            caption_ = dialog.Caption;
            if (whileOpen) {
                whileOpen();
            }
            world.Click(dialog, dialog.cmdExit);
        });
    }

    void Report(std::string& message, std::int16_t style = 0, const std::string& code = "Title") {
        world.Dispatch([&] { Window().error_Message(message, style, code); });
    }

    std::string text_;
    std::string caption_;
};

TEST_F(frmSwiftPatchErrorMessage, TakesItsStepsInOrder) {
    AnswerDialog();
    std::string message = "It failed.";
    Report(message);

    std::vector<std::string> lines = world.trace.Lines();
    const auto text = std::find_if(lines.begin(), lines.end(), [](const std::string& line) {
        return line.starts_with("lblWarning.Caption");
    });
    ASSERT_NE(text, lines.end());
    *text = "the text";
    EXPECT_THAT(
        lines,
        ElementsAre("DoEvents", "Animation1.AutoPlay = False", "Animation1.Stop",
                    "fraMessages.Refresh", "Animation1.Visible = False",
                    "ProgressBar1.Visible = False", "lblStatus.Caption = \"Update disabled.\"",
                    "DoEvents", "tmrCheckVersion.Enabled = False", "frmSwiftPatch.MousePointer = 0",
                    "DoEvents", "frmRunning.Load", "frmRunning.Caption = \"Title\"", "the text",
                    "frmRunning.ShowModal", "frmRunning.Destroy", "frmSwiftPatch.Show",
                    "cmdClose.Enabled = True", "chkRunTolvex.Value = 0"));
}

TEST_F(frmSwiftPatchErrorMessage, TimeOutWordingAndRetryComeBeforeTheDialog) {
    AnswerDialog();
    std::string message = "Error # 35758";
    Report(message);

    EXPECT_TRUE(InOrder(world.trace.Lines(),
                        {"frmSwiftPatch.MousePointer = 0",
                         "lblAnimationMsg.Caption = \"Download failed... Timed-out Connection.\"",
                         "cmdRetry.Visible = True", "cmdRetry.Enabled = True", "DoEvents",
                         "frmRunning.Load", "frmRunning.ShowModal"}));
}

TEST_F(frmSwiftPatchErrorMessage, NumberAnywhereInTheMessageOffersRetry) {
    AnswerDialog();
    std::string message = "order9357581";
    Report(message);
    EXPECT_TRUE(Window().cmdRetry.Visible);
    EXPECT_TRUE(Window().cmdRetry.Enabled);
}

TEST_F(frmSwiftPatchErrorMessage, OtherMessagesOfferNoRetry) {
    AnswerDialog();
    std::string message = "Error # 35756";
    Report(message);
    EXPECT_FALSE(Window().cmdRetry.Visible);
    EXPECT_TRUE(world.trace.StartingWith("lblAnimationMsg").empty());
}

TEST_F(frmSwiftPatchErrorMessage, MessageComesBackWithALineBreak) {
    AnswerDialog();
    std::string message = "It failed.";
    Report(message);
    EXPECT_EQ(message, "It failed.\r\n");
    EXPECT_THAT(text_, StartsWith("It failed.\r\n\r\n\r\nIf you continue"));
}

TEST_F(frmSwiftPatchErrorMessage, StyleOneNamesAProgramToBeClosed) {
    AnswerDialog();
    std::string message = "tolvex.exe";
    Report(message, 1);
    EXPECT_THAT(text_, StartsWith("The program tolvex.exe that you are\r\n"));
    EXPECT_EQ(message, "tolvex.exe\r\n");
}

TEST_F(frmSwiftPatchErrorMessage, OtherStylesShowTheMessageItself) {
    for (const std::int16_t style : {std::int16_t{0}, std::int16_t{2}, std::int16_t{-1}}) {
        AnswerDialog();
        std::string message = "tolvex.exe";
        Report(message, style);
        EXPECT_THAT(text_, StartsWith("tolvex.exe\r\n"));
    }
}

TEST_F(frmSwiftPatchErrorMessage, TitleBecomesTheDialogsCaption) {
    AnswerDialog();
    std::string message = "It failed.";
    Report(message, 0, "Bad Download Link");
    EXPECT_EQ(caption_, "Bad Download Link");
}

TEST_F(frmSwiftPatchErrorMessage, WithoutATitleTheDialogKeepsItsOwn) {
    AnswerDialog();
    std::string message = "It failed.";
    Report(message, 0, "");
    EXPECT_EQ(caption_, "Program Is Still Running");
}

TEST_F(frmSwiftPatchErrorMessage, TransferIsCancelledBeforeTheDialogShows) {
    headless::Reply reply;
    reply.states = {};
    reply.silent = true;
    world.network.Answer("GET http://host/x", reply);
    Window().Inet1.Execute("host/x", "GET");
    AnswerDialog([this] {
        EXPECT_FALSE(Window().Inet1.StillExecuting());
        EXPECT_FALSE(Window().cmdClose.Enabled);
        EXPECT_EQ(Window().lblStatus.Caption.Get(), "Update disabled.");
    });
    std::string message = "It failed.";
    Report(message);
    EXPECT_TRUE(Window().cmdClose.Enabled);
}

TEST_F(frmSwiftPatchErrorMessage, MainProgramIsNotStartedOnExitAfterAFailure) {
    AnswerDialog();
    std::string message = "It failed.";
    Report(message);
    EXPECT_EQ(Window().chkRunTolvex.Value.Get(), CheckState::kUnchecked);
    world.AddFile("tolvex.exe", "MZ");
    world.Click(Window(), Window().cmdClose);
    EXPECT_TRUE(world.RunOver());
    EXPECT_TRUE(world.trace.StartingWith("ShellExecute").empty());
}

TEST_F(frmSwiftPatchErrorMessage, CheckTimerDoesNotFireWhileTheDialogIsOpen) {
    AnswerDialog([this] { world.PumpFor(5000); });
    std::string message = "It failed.";
    Report(message);
    EXPECT_EQ(world.trace.Count("tmrCheckVersion.Enabled = False"), 1U);
    EXPECT_TRUE(world.network.Requests().empty());
}

TEST_F(frmSwiftPatchErrorMessage, ErrorOfItsOwnIsReportedAndNothingIsRetried) {
    world.AtPump(2, [] { throw RuntimeError(error_number::kTypeMismatch); });
    world.user.Answer("Error Number: 13");
    std::string message = "It failed.";
    Report(message);
    EXPECT_EQ(world.trace.Lines().back(),
              "MsgBox 64 \"SwiftPatch\" \"Error Number: 13\\r\\n\\r\\nType mismatch\\r\\n\\r\\n"
              "Source: [frmSwiftPatch] error_Message()\" -> OK");
    EXPECT_FALSE(Window().cmdClose.Enabled);
}

TEST_F(frmSwiftPatchErrorMessage, WindowClosedFromBehindTheDialogLeavesNothingRunning) {
    // A session that ends closes the main window although a dialog is open.
    world.user.AtDialog("frmRunning", [this](Form& form) {
        Window().UnloadUnasked();
        form.Unload();
    });
    std::string message = "It failed.";
    world.Dispatch([&] {
        Window().error_Message(message, 0, "Title");
        Window().Inet1.Cancel();
    });
    EXPECT_TRUE(world.RunOver());
}

}  // namespace
}  // namespace swiftpatch
