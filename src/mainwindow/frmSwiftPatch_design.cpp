#include "mainwindow/frmSwiftPatch.h"
#include "shared/branding.h"

namespace swiftpatch {
namespace {

FormDesign MainWindowDesign() {
    FormDesign design;
    design.caption = SWIFTPATCH_UPDATER_NAME;
    design.width = 344;
    design.height = 252;
    design.border = BorderStyle::kFixedSingle;
    design.unloadEndsRun = true;
    return design;
}

}  // namespace

frmSwiftPatch::frmSwiftPatch()
    : Form("frmSwiftPatch", MainWindowDesign()),
      txtDebug(*this, 101, "txtDebug"),
      tmrDownloadTimeout(*this, 102, "tmrDownloadTimeout"),
      chkRunTolvex(*this, 103, "chkRun" SWIFTPATCH_NAME_IN_CODE),
      cmdInstall(*this, 104, "cmdInstall"),
      cmdRetry(*this, 105, "cmdRetry"),
      cmdReadLog(*this, 106, "cmdReadLog"),
      tmrCheckVersion(*this, 107, "tmrCheckVersion"),
      cmdClose(*this, 108, "cmdClose"),
      cmdGoBack(*this, 109, "cmdGoBack"),
      Inet1("Inet1"),
      ProgressBar1(*this, 110, "ProgressBar1"),
      fraMessages(*this, 111, "fraMessages"),
      Animation1(*this, 112, "Animation1", &fraMessages),
      lblAnimationMsg(*this, 113, "lblAnimationMsg", &fraMessages),
      lstStat(*this, 114, "lstStat"),
      lblTolvexVersion(*this, 115, "lbl" SWIFTPATCH_NAME_IN_CODE "Version"),
      lblSimulation(*this, 116, "lblSimulation"),
      lblVersion(*this, 117, "lblVersion"),
      lblStatus(*this, 118, "lblStatus") {
    Design();
    PlaceControls();
    WireEvents();
}

void frmSwiftPatch::Design() {
    txtDebug.Text.Design("Text1");
    tmrDownloadTimeout.Interval.Design(1000);
    chkRunTolvex.Caption.Design("Run " SWIFTPATCH_RUN_NAME " on exit");
    chkRunTolvex.Value.Design(CheckState::kChecked);
    cmdInstall.Caption.Design("Install");
    cmdInstall.Enabled.Design(false);
    cmdInstall.Default = true;
    cmdRetry.Caption.Design("Retry Download");
    cmdRetry.Visible.Design(false);
    cmdReadLog.Caption.Design("Error Log");
    tmrCheckVersion.Interval.Design(500);
    cmdClose.Caption.Design("Close");
    cmdClose.Enabled.Design(false);
    cmdClose.Cancel = true;
    cmdGoBack.Caption.Design("Go Back...");
    cmdGoBack.Visible.Design(false);
    cmdGoBack.Enabled.Design(false);
    lstStat.Columns = {"Stage", "Status"};
    lblTolvexVersion.Caption.Design(SWIFTPATCH_NAME_IN_TEXT " Version available: 30.x.x");
    lblTolvexVersion.Visible.Design(false);
    lblSimulation.Caption.Design("Simulation Mode");
    lblSimulation.Visible.Design(false);
    lblVersion.Caption.Design("Version 1.02.02");
    lblStatus.Caption.Design("100 % download completed");
    txtDebug.AccessibleName = "Update information";
    ProgressBar1.AccessibleName = "Download progress";
    Animation1.AccessibleName = "Work under way";
    lstStat.AccessibleName = "Status list";
}

void frmSwiftPatch::PlaceControls() {
    lblVersion.Place({8, 7, 160, 9});
    lblSimulation.Place({252, 7, 84, 9});
    lblTolvexVersion.Place({8, 18, 328, 9});
    fraMessages.Place({8, 28, 328, 66});
    Animation1.Place({8, 11, 130, 48});
    lblAnimationMsg.Place({146, 11, 176, 48});
    lblStatus.Place({8, 99, 328, 9});
    ProgressBar1.Place({8, 110, 328, 11});
    txtDebug.Place({8, 126, 328, 70}, {.fixedPitch = true, .multiLine = true});
    lstStat.Place({8, 200, 328, 26});
    chkRunTolvex.Place({8, 233, 110, 11});
    cmdReadLog.Place({122, 231, 46, 14});
    cmdRetry.Place({172, 231, 64, 14});
    cmdInstall.Place({240, 231, 46, 14});
    cmdClose.Place({290, 231, 46, 14});
    cmdGoBack.Place({280, 3, 56, 14});
    SetTabOrder(
        {&cmdInstall, &cmdRetry, &cmdReadLog, &cmdClose, &cmdGoBack, &chkRunTolvex, &txtDebug});
}

void frmSwiftPatch::WireEvents() {
    tmrDownloadTimeout.Elapsed = [this] { tmrDownloadTimeout_Timer(); };
    tmrCheckVersion.Elapsed = [this] { RunStage([this] { tmrCheckVersion_Timer(); }); };
    cmdInstall.Click = [this] { RunStage([this] { cmdInstall_Click(); }); };
    cmdRetry.Click = [this] { RunStage([this] { cmdRetry_Click(); }); };
    cmdGoBack.Click = [this] { RunStage([this] { cmdGoBack_Click(); }); };
    cmdReadLog.Click = [this] { cmdReadLog_Click(); };
    cmdClose.Click = [this] { cmdClose_Click(); };
    Inet1.StateChanged = [this](int state) {
        RunStage([this, state] { Inet1_StateChanged(static_cast<std::int16_t>(state)); });
    };
}

}  // namespace swiftpatch
