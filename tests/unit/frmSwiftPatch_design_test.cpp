#include <map>

#include "unit/program_test.h"

namespace swiftpatch {
namespace {

/// What the window holds before its load.
class frmSwiftPatchDesign : public ProgramTest {};

TEST_F(frmSwiftPatchDesign, TextsOfTheControls) {
    EXPECT_EQ(Window().Caption.Get(), "Swift Patch");
    EXPECT_EQ(Window().txtDebug.Text.Get(), "Text1");
    EXPECT_EQ(Window().chkRunTolvex.Caption.Get(), "Run q-tolvex.exe on exit");
    EXPECT_EQ(Window().cmdInstall.Caption.Get(), "Install");
    EXPECT_EQ(Window().cmdRetry.Caption.Get(), "Retry Download");
    EXPECT_EQ(Window().cmdReadLog.Caption.Get(), "Error Log");
    EXPECT_EQ(Window().cmdClose.Caption.Get(), "Close");
    EXPECT_EQ(Window().cmdGoBack.Caption.Get(), "Go Back...");
    EXPECT_EQ(Window().lblTolvexVersion.Caption.Get(), "q-tolvex Version available: 30.x.x");
    EXPECT_EQ(Window().lblSimulation.Caption.Get(), "Simulation Mode");
    EXPECT_EQ(Window().lblVersion.Caption.Get(), "Version 1.02.02");
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "100 % download completed");
    EXPECT_TRUE(world.trace.Lines().empty());
}

TEST_F(frmSwiftPatchDesign, StatesOfTheControls) {
    EXPECT_FALSE(Window().cmdClose.Enabled);
    EXPECT_TRUE(Window().cmdInstall.Visible);
    EXPECT_FALSE(Window().cmdInstall.Enabled);
    EXPECT_FALSE(Window().cmdRetry.Visible);
    EXPECT_FALSE(Window().cmdGoBack.Visible);
    EXPECT_FALSE(Window().cmdGoBack.Enabled);
    EXPECT_FALSE(Window().lblTolvexVersion.Visible);
    EXPECT_FALSE(Window().lblSimulation.Visible);
    EXPECT_EQ(Window().chkRunTolvex.Value.Get(), CheckState::kChecked);
}

TEST_F(frmSwiftPatchDesign, TimersAreOffWithTheirIntervals) {
    EXPECT_FALSE(Window().tmrDownloadTimeout.Enabled);
    EXPECT_EQ(Window().tmrDownloadTimeout.Interval.Get(), 1000);
    EXPECT_FALSE(Window().tmrCheckVersion.Enabled);
    EXPECT_EQ(Window().tmrCheckVersion.Interval.Get(), 500);
}

TEST_F(frmSwiftPatchDesign, ControlIdsStayFixed) {
    std::map<std::string, int> ids;
    for (const Control* control : Window().Controls()) {
        ids[control->Name()] = control->Id();
    }
    for (const Timer* timer : Window().Timers()) {
        ids[timer->Name()] = timer->Id();
    }
    EXPECT_EQ(ids, (std::map<std::string, int>{{"txtDebug", 101},
                                               {"tmrDownloadTimeout", 102},
                                               {"chkRunTolvex", 103},
                                               {"cmdInstall", 104},
                                               {"cmdRetry", 105},
                                               {"cmdReadLog", 106},
                                               {"tmrCheckVersion", 107},
                                               {"cmdClose", 108},
                                               {"cmdGoBack", 109},
                                               {"ProgressBar1", 110},
                                               {"fraMessages", 111},
                                               {"Animation1", 112},
                                               {"lblAnimationMsg", 113},
                                               {"lstStat", 114},
                                               {"lblTolvexVersion", 115},
                                               {"lblSimulation", 116},
                                               {"lblVersion", 117},
                                               {"lblStatus", 118}}));
}

// Labels, buttons and the check box are called by what they show.
TEST_F(frmSwiftPatchDesign, WhatShowsNoCaptionHasANameForScreenReaders) {
    for (const Control* control : std::initializer_list<const Control*>{
             &Window().txtDebug, &Window().ProgressBar1, &Window().Animation1, &Window().lstStat}) {
        EXPECT_NE(control->AccessibleName, nullptr) << control->Name();
    }
}

TEST_F(frmSwiftPatchDesign, AnimationAndItsMessageStandInTheFrame) {
    for (const Control* control : Window().Controls()) {
        const bool inFrame =
            control == &Window().Animation1 || control == &Window().lblAnimationMsg;
        EXPECT_EQ(control->Container() == &Window().fraMessages, inFrame) << control->Name();
    }
}

}  // namespace
}  // namespace swiftpatch
