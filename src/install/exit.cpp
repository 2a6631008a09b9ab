#include "mainwindow/frmSwiftPatch.h"
#include "runtime/events.h"
#include "runtime/files.h"
#include "runtime/msgbox.h"
#include "runtime/system.h"
#include "shared/error_report.h"
#include "shared/paths.h"

namespace swiftpatch {
namespace {

constexpr int kShowNormal = 1;  // SW_SHOWNORMAL

}  // namespace

void frmSwiftPatch::cmdClose_Click() { Unload(); }

void frmSwiftPatch::Form_QueryUnload(bool& cancel) {
    if (cmdClose.Enabled) {
        return;
    }
    // The first line ends with four dots and a blank, deliberately.
    cancel = MsgBox(
                 "Download not finished.... \r\n\r\n"
                 "Are you sure you want to exit this program?",
                 msgbox::kYesNo + msgbox::kInformation, "Confirm Exit") == MsgBoxAnswer::kNo;
}

void frmSwiftPatch::Form_Unload() {
    try {
        Inet1.Cancel();
        const std::string program = AppFile(kMainProgram);
        if (chkRunTolvex.Value == CheckState::kChecked && FileExists(program)) {
            ShellExecuteA("open", program, kShowNormal);
        }
        Instance.Release();
    } catch (const RuntimeError& error) {
        ReportError(error, "Form_Unload() (frmSwiftPatch)");
        End();
    }
}

}  // namespace swiftpatch
