#include "app/frmSplash1.h"

#include <string>

#include "app/settings.h"
#include "app/splash_background.h"
#include "components/utilities.h"
#include "mainwindow/frmSwiftPatch.h"
#include "runtime/app.h"
#include "runtime/clock.h"
#include "runtime/events.h"
#include "runtime/files.h"
#include "runtime/strings.h"
#include "shared/branding.h"
#include "shared/error_report.h"
#include "shared/shared_state.h"

namespace swiftpatch {
namespace {

constexpr std::int32_t kShownFor = 3000;       // Milliseconds.
constexpr std::int32_t kNewFeaturesFont = 10;  // Points; the web address has to fit the line.

}  // namespace

void frmSplash1::Form_Load() {
    if (App::PrevInstance()) {
        End();
    }
    RemoveUnfinishedCopy(App::Path());
    try {
        tmrUnload.Enabled = false;
        Show();  // So that the loading can be watched.
        DoEvents();
        topMost_ = SetTopMost(Handle(), kTrue);
        PaintSplashBackground(*this);
        ShowMessageOfTheDay();
        for (Label* title : {&lbltitle0, &lbltitle1}) {
            title->Caption =
                SWIFTPATCH_SHORT_NAME " " SWIFTPATCH_UPDATER_NAME " and Technical Support";
        }
        lblLoading.Caption = "Moving Screen";
        CenterOnScreen();
        ShowVersion();
        lblCopyright.Caption = SWIFTPATCH_COPYRIGHT;
        LoadPreferences();
        tmrUnload.Interval = kShownFor;
        tmrUnload.Enabled = true;
    } catch (const RuntimeError& error) {
        ReportError(error, "[frmSplash1] Form_Load()");
    }
}

void frmSplash1::ShowMessageOfTheDay() {
    const DateTime now = Now();
    switch (PartsOf(now).day % 4) {
        case 0:
            SetMain(SWIFTPATCH_SLOGAN);
            break;
        case 1:
            SetMain(FormatLongDate(now) + kCrLf + std::string(9, ' ') + FormatTime12(now));
            break;
        case 2:
            SetMain("Don't forget to\r\nBackup your files.");
            break;
        default:
            lblMain0.FontSize = kNewFeaturesFont;
            lblMain1.FontSize = kNewFeaturesFont;
            SetMain("check for New Features!\r\n" SWIFTPATCH_WEB_ADDRESS);
            break;
    }
}

void frmSplash1::SetMain(const std::string& text) {
    lblMain0.Caption = text;
    lblMain1.Caption = text;
}

void frmSplash1::ShowVersion() {
    lblVersion.Caption = "Version " + std::to_string(App::Major()) + "." +
                         std::to_string(App::Minor()) + "." + ZeroPadded(App::Revision(), 3);
}

void frmSplash1::LoadPreferences() {
    lblLoading.Caption = "Loading Preferences";
    shared.LoadingPreferences = true;
    LoadSettings();
    shared.LoadingPreferences = false;
    lblLoading.Caption = "Preferences OK";
}

void frmSplash1::tmrUnload_Timer() {
    // Once only: the main window's load can take longer than the interval when it asks a question.
    tmrUnload.Enabled = false;
    DoEvents();
    Hide();
    frmSwiftPatch::Instance.Get().Show();
    Unload();
}

void frmSplash1::Form_Unload() { Instance.Release(); }

void frmSplash1::cmdExit_Click() { End(); }

}  // namespace swiftpatch
