#include "app/error_report.h"
#include "app/paths.h"
#include "app/shared_state.h"
#include "install/frmLog.h"
#include "mainwindow/frmSwiftPatch.h"
#include "runtime/files.h"

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
