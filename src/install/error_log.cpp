#include "install/frmLog.h"
#include "mainwindow/frmSwiftPatch.h"
#include "runtime/files.h"
#include "shared/error_report.h"
#include "shared/paths.h"
#include "shared/shared_state.h"

namespace swiftpatch {

void frmSwiftPatch::cmdReadLog_Click() {
    try {
        Hide();
        frmLog& viewer = frmLog::Instance.Get();
        viewer.LogFileName = shared.LogFileName;
        viewer.Show();
    } catch (const RuntimeError& error) {
        ReportError(error, "[frmSwiftPatch] cmdReadLog_Click()");
        frmLog::Instance.Release();
        Show();
    }
}

void frmSwiftPatch::OfferErrorLog() {
    if (!shared.LogFileName.empty() && FileExists(AppFile(shared.LogFileName))) {
        cmdReadLog.Visible = true;
    }
}

}  // namespace swiftpatch
