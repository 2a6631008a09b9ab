#include "net/download_watchdog.h"

#include <limits>

#include "mainwindow/frmSwiftPatch.h"
#include "shared/error_report.h"

namespace swiftpatch {

void DownloadWatchdog::Tick(std::int32_t size) {
    if (size > 0 && size != lastSize) {
        lastSize = size;
    }
    if (size != lastSize) {
        tickCount = 0;
        return;
    }
    if (tickCount == std::numeric_limits<std::int32_t>::max()) {
        throw RuntimeError(error_number::kOverflow);
    }
    ++tickCount;
}

void frmSwiftPatch::tmrDownloadTimeout_Timer() {
    try {
        watchdog.Tick(expectedSize);
    } catch (const RuntimeError& error) {
        ReportError(error, "[frmSwiftPatch] tmrDownloadTimeout_Timer()");
    }
}

}  // namespace swiftpatch
