#include "runtime/controls.h"

#include "runtime/runtime_error.h"
#include "unit/program_test.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

class PanelForm : public Form {
public:
    PanelForm()
        : Form("Panel", {}),
          button(*this, 1, "button"),
          box(*this, 2, "box"),
          label(*this, 3, "label"),
          timer(*this, 4, "timer") {
        button.Click = [this] { ++clicks; };
        timer.Elapsed = [this] { ++ticks; };
    }

    CommandButton button;
    CheckBox box;
    Label label;
    Timer timer;
    int clicks = 0;
    int ticks = 0;
};

class ControlsTest : public ProgramTest {
protected:
    PanelForm panel;
};

TEST_F(ControlsTest, ClickOnAVisibleEnabledButtonCounts) {
    panel.button.RaiseClick();
    EXPECT_EQ(panel.clicks, 1);
}

TEST_F(ControlsTest, ClickOnAHiddenButtonIsIgnored) {
    panel.button.Visible = false;
    panel.button.RaiseClick();
    EXPECT_EQ(panel.clicks, 0);
}

TEST_F(ControlsTest, ClickOnADisabledButtonIsIgnored) {
    panel.button.Enabled = false;
    panel.button.RaiseClick();
    EXPECT_EQ(panel.clicks, 0);
}

TEST_F(ControlsTest, ClickOnAButtonWithoutAProcedureDoesNothing) {
    panel.button.Click = {};
    panel.button.RaiseClick();
    EXPECT_EQ(panel.clicks, 0);
}

TEST_F(ControlsTest, LateTickOfATimerThatWasSwitchedOffIsDropped) {
    panel.timer.Enabled = true;
    panel.timer.Enabled = false;
    panel.timer.RaiseElapsed();
    EXPECT_EQ(panel.ticks, 0);
    panel.timer.Enabled = true;
    panel.timer.RaiseElapsed();
    EXPECT_EQ(panel.ticks, 1);
}

TEST_F(ControlsTest, TimerFiresEveryIntervalWhileEnabled) {
    panel.Show();
    panel.timer.Interval = 100;
    panel.timer.Enabled = true;
    world.PumpFor(351);
    EXPECT_EQ(panel.ticks, 3);
}

TEST_F(ControlsTest, TimerWithIntervalZeroNeverFires) {
    panel.Show();
    panel.timer.Enabled = true;
    world.PumpFor(1000);
    EXPECT_EQ(panel.ticks, 0);
}

TEST_F(ControlsTest, SameValueDoesNotStartATimerAgain) {
    panel.Show();
    panel.timer.Interval = 100;
    panel.timer.Enabled = true;
    world.PumpFor(60);
    panel.timer.Interval = 100;
    panel.timer.Enabled = true;
    world.PumpFor(41);
    EXPECT_EQ(panel.ticks, 1);
}

TEST_F(ControlsTest, NewIntervalStartsATimerAgain) {
    panel.Show();
    panel.timer.Interval = 100;
    panel.timer.Enabled = true;
    world.PumpFor(60);
    panel.timer.Interval = 90;
    world.PumpFor(80);
    EXPECT_EQ(panel.ticks, 0);
    world.PumpFor(11);
    EXPECT_EQ(panel.ticks, 1);
}

TEST_F(ControlsTest, PressTurnsACheckBoxOver) {
    panel.box.RaisePressed();
    EXPECT_EQ(panel.box.Value.Get(), CheckState::kChecked);
    panel.box.RaisePressed();
    EXPECT_EQ(panel.box.Value.Get(), CheckState::kUnchecked);
    panel.box.Value = CheckState::kGrayed;
    panel.box.RaisePressed();
    EXPECT_EQ(panel.box.Value.Get(), CheckState::kUnchecked);
}

TEST_F(ControlsTest, PropertyTellsThePlatformWhatWasSet) {
    panel.label.Caption = "a\r\nb";
    panel.label.FontSize = 10;
    panel.label.Background = BackStyle::kTransparent;
    panel.label.Visible = false;
    EXPECT_THAT(world.trace.Lines(),
                ElementsAre("label.Caption = \"a\\r\\nb\"", "label.FontSize = 10",
                            "label.BackStyle = 0", "label.Visible = False"));
    EXPECT_EQ(panel.label.Caption.Get(), "a\r\nb");
    EXPECT_TRUE(panel.label.FontSize == 10);
}

TEST_F(ControlsTest, DesignTimeValueTellsThePlatformNothing) {
    panel.label.Caption.Design("design");
    EXPECT_EQ(panel.label.Caption.Get(), "design");
    EXPECT_TRUE(world.trace.Lines().empty());
}

TEST(ControlsColours, PartsStandInTheirBytes) {
    EXPECT_EQ(Rgb(1, 2, 3), static_cast<Color>(0x030201));
    EXPECT_EQ(Grey(0), Color::kBlack);
    EXPECT_EQ(Grey(255), Color::kWhite);
    EXPECT_EQ(Grey(16), static_cast<Color>(0x101010));
}

TEST(ControlsColours, LevelsOutOfRangeAreError5) {
    for (const int level : {-1, 256}) {
        try {
            Grey(level);
            FAIL() << "no error";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), 5);
        }
    }
    EXPECT_THROW(Rgb(0, 0, 256), RuntimeError);
    EXPECT_THROW(Rgb(0, -1, 0), RuntimeError);
}

}  // namespace
}  // namespace swiftpatch
