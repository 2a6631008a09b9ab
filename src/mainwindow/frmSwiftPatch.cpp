#include "mainwindow/frmSwiftPatch.h"

#include <algorithm>
#include <array>
#include <utility>

#include "components/utilities.h"
#include "install/frmRunning.h"
#include "install/running_program.h"
#include "runtime/app.h"
#include "runtime/events.h"
#include "runtime/files.h"
#include "runtime/msgbox.h"
#include "runtime/strings.h"
#include "shared/branding.h"
#include "shared/error_report.h"
#include "shared/paths.h"
#include "shared/shared_state.h"
#include "shared/transfer_fault.h"

namespace swiftpatch {

void frmSwiftPatch::Form_Load() {
    if (App::PrevInstance()) {
        End();
    }
    try {
        MakeTopMost();
        txtDebug.Text = "";
        ShowOwnVersion();
        cmdReadLog.Visible = false;
        lblStatus.Background = BackStyle::kTransparent;
        shared.WindowsDirectory = GetWindowsDir();
        shared.SystemDirectory = GetSystemDir();
        systemInformation.emplace();
        ProgressBar1.Max = 100;
        ProgressBar1.Min = 0;
        ProgressBar1.Value = 0;
        lblStatus.Caption = "Initializing update...";
        OfferWayBack();
        Show();
        DoEvents();
        lblStatus.BackColor = Color::kButtonFace;
        GetWindowHandles(*this);
        ShowAnimation(AppFile(kBusyAnimation), "Establishing internet connection... please wait");
        DoEvents();
        checkArmed = true;
        tmrCheckVersion.Enabled = true;
        if (App::Major() == 0) {
            ShowBetaNotice();
        }
        MakeTopMost();
    } catch (const RuntimeError& error) {
        ReportError(error, "[frmSwiftPatch] Form_Load()");
    }
}

void frmSwiftPatch::RunStage(const std::function<void()>& stage) {
    ++stagesBegun_;
    const bool outerStage = std::exchange(stageUnderWay_, true);
    UpdateWayBack();
    stage();
    stageUnderWay_ = outerStage;
    UpdateWayBack();
}

void frmSwiftPatch::MakeTopMost() {
    topMost = SetTopMost(Handle(), kTrue);
    DoEvents();
}

void frmSwiftPatch::ShowOwnVersion() {
    lblVersion.Caption = SWIFTPATCH_UPDATER_NAME " Version: " + std::to_string(App::Major()) + "." +
                         std::to_string(App::Minor()) + "." + ZeroPadded(App::Revision(), 3);
}

void frmSwiftPatch::ShowBetaNotice() {
    MsgBox("You are running a free version of " SWIFTPATCH_SHORT_NAME_IN_TEXT
           " updater\r\n"
           "which contains a few debug message boxes.\r\n\r\n"
           "Beta Version 0." +
               std::to_string(App::Minor()) + "." + std::to_string(App::Revision()),
           msgbox::kInformation, "Beta Version");
}

void frmSwiftPatch::ShowAnimation(const std::string& path, const std::string& /*message*/) {
    if (!path.empty() && FileExists(path)) {
        Animation1.AutoPlay = true;
        Animation1.Open(path);
        Animation1.Visible = true;
        ProgressBar1.Visible = true;
        lblStatus.Caption = "Initializing update...";
        return;
    }
    DoEvents();
    Animation1.AutoPlay = false;
    Animation1.Stop();
    fraMessages.Refresh();
    Animation1.Visible = false;
    ProgressBar1.Visible = false;
    lblStatus.Caption = "Update disabled.";
}

void frmSwiftPatch::error_Message(std::string& message, std::int16_t style,
                                  const std::string& code) {
    try {
        ShowAnimation("", "");
        TaskbarProgress = taskbar::kFailure;
        message += kCrLf;
        DoEvents();
        Inet1.Cancel();
        tmrCheckVersion.Enabled = false;
        Pointer = MousePointer::kDefault;
        frmRunning dialog;
        dialog.code = code;
        (style == message_style::kProgramName ? dialog.program : dialog.message) = message;
        if (message.find(std::to_string(error_number::kRequestTimedOut)) != std::string::npos) {
            lblAnimationMsg.Caption = "Download failed... Timed-out Connection.";
            cmdRetry.Visible = true;
            cmdRetry.Enabled = true;
        }
        DoEvents();
        OfferErrorLog();
        dialog.ShowModal();
        Show();
        cmdClose.Enabled = true;
        chkRunTolvex.Value = CheckState::kUnchecked;
        FocusNextStep();
    } catch (const RuntimeError& error) {
        ReportError(error, "[frmSwiftPatch] error_Message()");
    }
}

void frmSwiftPatch::ShowTransferFault() {
    if (Inet1.Fault() != TransferFault::kNone) {
        txtDebug.Text = TransferFaultText(Inet1.Fault());
    }
}

void frmSwiftPatch::FocusNextStep() {
    const std::array steps{&cmdRetry, &cmdInstall, &cmdClose};
    const auto next = std::find_if(steps.begin(), steps.end(), [](const CommandButton* step) {
        return step->Visible && step->Enabled;
    });
    if (next != steps.end()) {
        (*next)->SetFocus();
    }
}

void frmSwiftPatch::HideBusyDisplay() {
    DoEvents();
    Animation1.Stop();
    fraMessages.Visible = false;
    ProgressBar1.Visible = false;
}

}  // namespace swiftpatch
