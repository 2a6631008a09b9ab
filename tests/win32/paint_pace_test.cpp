#include <gtest/gtest.h>

#include "runtime/controls.h"
#include "runtime/events.h"
#include "runtime/form.h"
#include "runtime/win32/win32.h"

namespace swiftpatch::real_system {
namespace {

FormDesign BarDesign() {
    FormDesign design;
    design.width = 120;
    design.height = 30;
    return design;
}

constexpr int kBar = 5;

class BarForm : public Form {
public:
    BarForm() : Form("PaintPaceTest", BarDesign()), bar(*this, kBar, "bar") {
        bar.Place({5, 5, 100, 10});
    }
    /// What the platform's bar shows.
    static LRESULT Shown() {
        const HWND window = FindWindowA("PaintPaceTest", nullptr);
        return SendMessageA(GetDlgItem(window, kBar), PBM_GETPOS, 0, 0);
    }

    ProgressBar bar;
};

class PaintPace : public testing::Test {
protected:
    static constexpr int kMany = 1000;

    PaintPace() {
        form.bar.Max = kMany;
        form.Show();
        DoEvents();
        Sleep(150);
    }
    ~PaintPace() override { form.Unload(); }

    BarForm form;
};

TEST_F(PaintPace, ChangeAfterARestIsShownAtOnce) {
    form.bar.Value = 7;
    EXPECT_EQ(BarForm::Shown(), 7);
}

TEST_F(PaintPace, OfManyChangesInARowMostAreNotShown) {
    int shown = 0;
    for (int value = 1; value <= kMany; ++value) {
        form.bar.Value = value;
        shown += BarForm::Shown() == value ? 1 : 0;
    }
    EXPECT_GE(shown, 1);
    EXPECT_LT(shown, kMany / 2);
}

TEST_F(PaintPace, YieldThatWorkMayFollowShowsTheLastChange) {
    for (int value = 1; value <= kMany; ++value) {
        form.bar.Value = value;
    }
    DoEvents();
    EXPECT_EQ(BarForm::Shown(), kMany);
}

TEST_F(PaintPace, LastChangeIsShownByItselfAMomentLater) {
    for (int value = 1; value <= kMany; ++value) {
        form.bar.Value = value;
    }
    for (int look = 0; look < 1000 && BarForm::Shown() != kMany; ++look) {
        Sleep(5);
        DoEventsPaced();
    }
    EXPECT_EQ(BarForm::Shown(), kMany);
}

}  // namespace
}  // namespace swiftpatch::real_system
