#include "app/frmSplash1.h"

#include "runtime/internal/unfinished_copy.h"
#include "runtime/program.h"
#include "runtime/runtime_error.h"
#include "shared/branding.h"
#include "shared/shared_state.h"
#include "unit/program_test.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class frmSplash1Test : public ProgramTest {
protected:
    frmSplash1& Form() { return frmSplash1::Instance.Get(); }

    void Start() {
        world.Dispatch([] { Main(); });
    }

    /// Starts on a day of March 2026 at 16:07 and gives the message of that day.
    std::string MessageOn(int day) {
        frmSplash1::Instance.Release();
        DeleteForms();
        world.SetLocalTime(MakeDateTime({2026, 3, day, 16, 7, 0}));
        Start();
        EXPECT_EQ(Form().lblMain0.Caption.Get(), Form().lblMain1.Caption.Get());
        return Form().lblMain0.Caption;
    }
};

TEST_F(frmSplash1Test, LoadTakesItsStepsInOrder) {
    Start();

    std::vector<std::string> wanted{"frmSplash1.Load", "tmrUnload.Enabled = False",
                                    "frmSplash1.Show", "DoEvents",
                                    "SetWindowPos 65552 -1 0 0 0 0 3"};
    for (int level = 255; level >= 0; --level) {
        wanted.push_back("DoEvents");
        wanted.push_back("frmSplash1.BackColor = " + std::to_string(level * 0x10101));
    }
    const std::string message = headless::Quoted("Don't forget to\r\nBackup your files.");
    const std::string title = "\"Tolvex Swift Patch and Technical Support\"";
    for (const std::string& line : std::vector<std::string>{
             "lblMain(0).Caption = " + message, "lblMain(1).Caption = " + message,
             "lbltitle(0).Caption = " + title, "lbltitle(1).Caption = " + title,
             "lblLoading.Caption = \"Moving Screen\"", "frmSplash1.Move 362,299",
             "lblVersion.Caption = \"Version 1.2.002\"",
             "lblCopyright.Caption = " + headless::Quoted(SWIFTPATCH_COPYRIGHT),
             "lblLoading.Caption = \"Loading Preferences\"",
             "lblLoading.Caption = \"Preferences OK\"", "tmrUnload.Interval = 3000",
             "tmrUnload.Enabled = True", "frmSplash1.Show"}) {
        wanted.push_back(line);
    }
    EXPECT_EQ(world.trace.Lines(), wanted);
}

TEST_F(frmSplash1Test, FadeHas256StepsAndYieldsBeforeEach) {
    Start();

    const std::vector<std::string> steps = world.trace.StartingWith("frmSplash1.BackColor");
    ASSERT_EQ(steps.size(), 256U);
    EXPECT_EQ(steps.front(), "frmSplash1.BackColor = 16777215");
    EXPECT_EQ(steps.back(), "frmSplash1.BackColor = 0");
    EXPECT_EQ(world.trace.Count("DoEvents"), 257U);
}

TEST_F(frmSplash1Test, DrawingIsSetUpWithABlackBoxBelowTheScheme) {
    Start();

    EXPECT_EQ(Form().ScaleHeight(), 255);
    ASSERT_GT(Form().Painting().size(), 1U);
    const PaintedBox& box = Form().Painting().front();
    EXPECT_EQ(box.left, 0);
    EXPECT_EQ(box.top, 0);
    EXPECT_EQ(box.right, 840);
    EXPECT_EQ(box.bottom, 840);
    EXPECT_EQ(box.color, Color::kBlack);
}

TEST_F(frmSplash1Test, HighContrastKeepsItBlack) {
    world.machine.highContrast = true;
    Start();
    EXPECT_EQ(Form().Painting().size(), 1U);
    EXPECT_EQ(Form().BackColor.Get(), Color::kBlack);
}

TEST_F(frmSplash1Test, SecondOfTheMinuteChoosesTheColourScheme) {
    const auto colourAt = [this](int second) {
        frmSplash1::Instance.Release();
        DeleteForms();
        world.SetLocalTime(MakeDateTime({2026, 3, 10, 12, 0, second}));
        Start();
        return Form().Painting().at(1).color;
    };

    EXPECT_NE(colourAt(0), colourAt(1));
    EXPECT_NE(colourAt(1), colourAt(2));
    EXPECT_EQ(colourAt(1), colourAt(1));
}

TEST_F(frmSplash1Test, DayDivisibleByFourShowsTheSlogan) {
    for (const int day : {4, 8, 28}) {
        EXPECT_EQ(MessageOn(day), SWIFTPATCH_SLOGAN) << day;
    }
}

TEST_F(frmSplash1Test, DayOfRemainderOneShowsDateAndTime) {
    EXPECT_EQ(MessageOn(1), "Mar 01, 2026\r\n         4:07 PM");
    EXPECT_EQ(MessageOn(5), "Mar 05, 2026\r\n         4:07 PM");
    EXPECT_EQ(MessageOn(29), "Mar 29, 2026\r\n         4:07 PM");
}

TEST_F(frmSplash1Test, DayOfRemainderTwoRemindsOfTheBackup) {
    for (const int day : {2, 6, 30}) {
        EXPECT_EQ(MessageOn(day), "Don't forget to\r\nBackup your files.") << day;
    }
}

TEST_F(frmSplash1Test, DayOfRemainderThreePointsToNewFeaturesInAnotherFontSize) {
    for (const int day : {3, 7, 31}) {
        world.trace.Clear();
        EXPECT_EQ(MessageOn(day), "check for New Features!\r\n" SWIFTPATCH_WEB_ADDRESS) << day;
        EXPECT_TRUE(InOrder(world.trace.Lines(),
                            {"lblMain(0).FontSize = 10", "lblMain(1).FontSize = 10",
                             "lblMain(0).Caption = " + headless::Quoted(MessageOn(day))}));
    }
}

TEST_F(frmSplash1Test, OtherMessagesKeepTheFontSize) {
    MessageOn(4);
    MessageOn(5);
    MessageOn(6);
    EXPECT_TRUE(world.trace.StartingWith("lblMain(0).FontSize").empty());
}

TEST_F(frmSplash1Test, DesignTitleHasTwoAmpersandsWhereTheRunTimeTitleHasAnd) {
    EXPECT_EQ(Form().lbltitle0.Caption.Get(), "Tolvex Swift Patch && Technical Support");
    EXPECT_EQ(Form().lbltitle1.Caption.Get(), "Tolvex Swift Patch && Technical Support");
    Start();
    EXPECT_EQ(Form().lbltitle0.Caption.Get(), "Tolvex Swift Patch and Technical Support");
    EXPECT_EQ(Form().lbltitle1.Caption.Get(), "Tolvex Swift Patch and Technical Support");
}

TEST_F(frmSplash1Test, DesignTimeTextsAndTimer) {
    EXPECT_EQ(Form().lblVersion.Caption.Get(), "ver:");
    EXPECT_EQ(Form().cmdExit.Caption.Get(), "Exit");
    EXPECT_FALSE(Form().tmrUnload.Enabled);
    EXPECT_EQ(Form().tmrUnload.Interval.Get(), 1000);
    EXPECT_TRUE(world.trace.Lines().empty());
}

TEST_F(frmSplash1Test, ControlIdsStayFixed) {
    std::vector<int> ids;
    for (const Control* control : Form().Controls()) {
        ids.push_back(control->Id());
    }
    EXPECT_THAT(ids, ElementsAre(207, 201, 202, 203, 204, 205, 206, 210, 208));
    EXPECT_EQ(Form().tmrUnload.Id(), 209);
}

TEST_F(frmSplash1Test, RevisionIsShownWithThreeDigits) {
    for (const auto& [revision, text] : std::vector<std::pair<int, std::string>>{
             {0, "Version 4.10.000"}, {12, "Version 4.10.012"}, {123, "Version 4.10.123"}}) {
        frmSplash1::Instance.Release();
        DeleteForms();
        world.machine.major = 4;
        world.machine.minor = 10;
        world.machine.revision = revision;
        Start();
        EXPECT_EQ(Form().lblVersion.Caption.Get(), text);
    }
}

TEST_F(frmSplash1Test, LoadingFlagIsTrueOnlyWhileTheSettingsAreRead) {
    std::vector<bool> flags{shared.LoadingPreferences};
    std::string caption;
    world.whileReadingProfile = [&] {
        flags.push_back(shared.LoadingPreferences);
        caption = Form().lblLoading.Caption;
    };
    Start();
    flags.push_back(shared.LoadingPreferences);

    EXPECT_THAT(flags, ElementsAre(false, true, true, true, true, true, false));
    EXPECT_EQ(caption, "Loading Preferences");
}

TEST_F(frmSplash1Test, MainCalledAgainShowsTheSameWindow) {
    Start();
    Start();
    EXPECT_EQ(world.trace.Count("frmSplash1.Load"), 1U);
    EXPECT_EQ(world.trace.Lines().back(), "frmSplash1.Show");
}

TEST_F(frmSplash1Test, SecondInstanceEndsWithoutAWindow) {
    world.machine.prevInstance = true;
    Start();

    // The window's frame exists while it loads, but nothing of it is shown.
    EXPECT_THAT(world.trace.Lines(), ElementsAre("frmSplash1.Load", "End"));
    EXPECT_TRUE(world.RunOver());
}

TEST_F(frmSplash1Test, RemovesWhatACopyThatWasKilledHasLeft) {
    world.AddFile(kUnfinishedCopy, "half a build");
    Start();
    EXPECT_EQ(world.disk.Find(world.PathOf(kUnfinishedCopy)), nullptr);
}

TEST_F(frmSplash1Test, LeavesSomebodyElsesFileOfThatName) {
    world.AddFile(kUnfinishedCopy, "somebody else's").readOnly = true;
    Start();
    EXPECT_NE(world.disk.Find(world.PathOf(kUnfinishedCopy)), nullptr);
}

// The first one may be in the midst of the copy.
TEST_F(frmSplash1Test, SecondInstanceLeavesAnUnfinishedCopy) {
    world.machine.prevInstance = true;
    world.AddFile(kUnfinishedCopy, "half a build");
    Start();
    EXPECT_NE(world.disk.Find(world.PathOf(kUnfinishedCopy)), nullptr);
}

TEST_F(frmSplash1Test, ErrorInLoadIsReportedAndTheTimerStaysOff) {
    world.AtPump(1, [] { throw RuntimeError(error_number::kDeviceIoError); });
    world.user.Answer("Error Number: 57");
    Start();

    EXPECT_TRUE(world.trace.Contains(
        "MsgBox 64 \"SwiftPatch\" \"Error Number: 57\\r\\n\\r\\nDevice I/O error\\r\\n\\r\\n"
        "Source: [frmSplash1] Form_Load()\" -> OK"));
    EXPECT_FALSE(Form().tmrUnload.Enabled);
    EXPECT_FALSE(world.RunOver());
}

TEST_F(frmSplash1Test, ErrorOfTheSettingsLoaderGoesToTheSameReport) {
    world.whileReadingProfile = [] { throw RuntimeError(error_number::kDiskNotReady); };
    world.user.Answer(
        "Error Number: 71\r\n\r\nDisk not ready\r\n\r\n"
        "Source: [frmSplash1] Form_Load()");
    Start();
    EXPECT_EQ(Form().lblLoading.Caption.Get(), "Loading Preferences");
}

}  // namespace
}  // namespace swiftpatch
