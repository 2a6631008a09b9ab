#include "install/frmRunning.h"

#include "shared/branding.h"
#include "unit/program_test.h"

namespace swiftpatch {
namespace {

const std::string kHelp =
    "\r\n\r\nIf you continue to have problems with swift patch\r\n"
    "Please call q-Tolvex Technical Support at\r\n" SWIFTPATCH_SUPPORT_LINE;

class frmRunningTest : public ProgramTest {
protected:
    std::string Text() {
        dialog.Show();
        return dialog.lblWarning.Caption;
    }

    frmRunning dialog;
};

TEST_F(frmRunningTest, DesignTimeTexts) {
    EXPECT_EQ(dialog.Caption.Get(), "Program Is Still Running");
    EXPECT_EQ(dialog.lblWarning.Caption.Get(),
              "The program you are trying to update is still running.");
    EXPECT_EQ(dialog.cmdExit.Caption.Get(), "E&xit Update");
    EXPECT_EQ(dialog.lblWarning.Id(), 301);
    EXPECT_EQ(dialog.cmdExit.Id(), 302);
}

TEST_F(frmRunningTest, ProgramNameAsksToCloseThatProgram) {
    dialog.program = "tolvex.exe";
    EXPECT_EQ(Text(),
              "The program tolvex.exe that you are\r\n"
              "trying to update is still running.\r\n"
              "\r\n"
              "Please close tolvex.exe before\r\n"
              "attempting a swift patch again." +
                  kHelp);
}

TEST_F(frmRunningTest, LineBreaksInTheNameAreRemoved) {
    dialog.program = "\r\nthe\r\nother.exe\r\n";
    EXPECT_TRUE(Text().starts_with("The program theother.exe that you are\r\n"));
    EXPECT_NE(Text().find("Please close theother.exe before\r\n"), std::string::npos);
}

TEST_F(frmRunningTest, ProgramNameGoesBeforeTheMessage) {
    dialog.program = "tolvex.exe";
    dialog.message = "something else";
    EXPECT_EQ(Text().find("something else"), std::string::npos);
}

TEST_F(frmRunningTest, WithoutAProgramNameTheMessageStandsAsItIs) {
    dialog.message = "It\r\nfailed.\r\n";
    EXPECT_EQ(Text(), "It\r\nfailed.\r\n" + kHelp);
}

TEST_F(frmRunningTest, WithoutAnyTextOnlyTheHelpShows) { EXPECT_EQ(Text(), kHelp); }

TEST_F(frmRunningTest, SupportHoursStandInTheHelp) {
    EXPECT_NE(Text().find("Monday to Friday, 9AM to 4PM EST"), std::string::npos);
}

TEST_F(frmRunningTest, CodeIsTheCaptionOnlyWhereItIsNotEmpty) {
    Text();
    EXPECT_EQ(dialog.Caption.Get(), "Program Is Still Running");
    dialog.Unload();
    dialog.code = "No Connection";
    Text();
    EXPECT_EQ(dialog.Caption.Get(), "No Connection");
}

TEST_F(frmRunningTest, ExitUnloadsTheDialogAndNothingElse) {
    Text();
    world.trace.Clear();
    world.Click(dialog, dialog.cmdExit);
    EXPECT_EQ(world.trace.Lines(), std::vector<std::string>{"frmRunning.Destroy"});
    EXPECT_FALSE(dialog.Loaded());
    EXPECT_FALSE(world.RunOver());
}

}  // namespace
}  // namespace swiftpatch
