#include "install/copy_error.h"
#include "install/go_back.h"
#include "install/running_program.h"
#include "mainwindow/frmSwiftPatch.h"
#include "runtime/msgbox.h"
#include "shared/branding.h"
#include "shared/error_report.h"
#include "shared/shared_state.h"

namespace swiftpatch {

void frmSwiftPatch::OfferWayBack() {
    if (shared.OfferBackups && !FindBackup().empty()) {
        cmdGoBack.Visible = true;
    }
}

void frmSwiftPatch::UpdateWayBack() {
    if (cmdGoBack.Visible) {
        cmdGoBack.Enabled = cmdClose.Enabled && !stageUnderWay_ && !tmrCheckVersion.Enabled &&
                            !Inet1.StillExecuting();
    }
}

void frmSwiftPatch::WithdrawWayBack() {
    if (cmdGoBack.Visible) {
        cmdGoBack.Visible = false;
    }
}

void frmSwiftPatch::cmdGoBack_Click() {
    try {
        GoBackToBackup();
    } catch (const RuntimeError& error) {
        ReportError(error, "[frmSwiftPatch] cmdGoBack_Click()");
    }
}

void frmSwiftPatch::GoBackToBackup() {
    // Whatever is pressed while something is asked or waited for, it is the later wish, and this
    // one is given up.
    const std::int32_t stage = stagesBegun_;
    const std::string backup = FindBackup();
    if (backup.empty()) {
        RefuseToGoBack("There is no earlier version of " SWIFTPATCH_SHORT_NAME_IN_TEXT
                       " to go back to.");
        FocusNextStep();
        return;
    }
    const bool wanted =
        MsgBox("Go back from version " + InstalledProductVersion() + " to version " + backup + "?",
               msgbox::kYesNo + msgbox::kQuestion) == MsgBoxAnswer::kYes;
    const bool running = wanted && GetWindowHandles(*this);
    if (stage != stagesBegun_) {
        return;
    }
    if (running) {
        RefuseToGoBack("Cannot go back while " SWIFTPATCH_SHORT_NAME " is still running.");
    } else if (wanted) {
        ReplaceByBackup(backup);
    }
    FocusNextStep();
}

void frmSwiftPatch::ReplaceByBackup(const std::string& version) {
    std::string what = SWIFTPATCH_PROGRAM " backup";
    try {
        KeepInstalledBuild();
        what = BackupName(version) + " to " SWIFTPATCH_PROGRAM;
        GoBack(version);
    } catch (const RuntimeError& error) {
        RefuseToGoBack(CopyError(what, error));
        return;
    }
    ShowBack(version);
}

void frmSwiftPatch::ShowBack(const std::string& version) {
    WithdrawWayBack();
    fraMessages.Visible = true;
    lblAnimationMsg.Caption = "You are back at version " + version + ".";
}

void frmSwiftPatch::RefuseToGoBack(const std::string& reason) {
    MsgBox("Go Back Error!\r\n\r\n" + reason + "\r\n" SWIFTPATCH_PROGRAM " not changed.",
           msgbox::kCritical);
}

}  // namespace swiftpatch
