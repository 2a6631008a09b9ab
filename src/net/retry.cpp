#include "mainwindow/frmSwiftPatch.h"
#include "runtime/events.h"
#include "shared/error_report.h"
#include "shared/paths.h"

namespace swiftpatch {

void frmSwiftPatch::cmdRetry_Click() {
    try {
        cmdRetry.Visible = false;
        TaskbarProgress = taskbar::kNothing;
        ShowAnimation(AppFile(kBusyAnimation), "Establishing internet connection... please wait");
        Show();
        DoEvents();
        retry = true;
        connectivityDone = false;
        tmrCheckVersion.Enabled = true;
    } catch (const RuntimeError& error) {
        ReportError(error, "[frmSwiftPatch] cmdRetry_Click()");
    }
}

}  // namespace swiftpatch
