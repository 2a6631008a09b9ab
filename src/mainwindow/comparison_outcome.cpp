#include "mainwindow/frmSwiftPatch.h"
#include "mainwindow/version_comparison.h"
#include "runtime/events.h"
#include "shared/branding.h"

namespace swiftpatch {
namespace {

void ReportMissingProgram(frmSwiftPatch& window) {
    window.programMissing = true;
    // The spelling is kept, deliberately.
    std::string text = "The main program does not exist in the specified posiiton.";
    window.error_Message(text, message_style::kText, "Program File Not Found");
}

void ReportBadName(frmSwiftPatch& window, const std::string& name) {
    std::string text = "The file '" + name +
                       "' you are requesting is invalid.\r\n"
                       "The file could have been tampered with.";
    window.error_Message(text, message_style::kText, "Bad Control File Name");
}

void ReportNothingOffered(frmSwiftPatch& window) {
    window.programMissing = false;
    window.cmdClose.Enabled = false;
    window.tmrCheckVersion.Enabled = false;
}

void ReportNothingNewer(frmSwiftPatch& window) {
    window.Pointer = MousePointer::kDefault;
    window.ProgressBar1.Value = 0;
    window.cmdClose.Enabled = true;
    window.FocusNextStep();
    window.lblStatus.Caption = "No update is required at this time.";
    DoEvents();
    window.Caption = SWIFTPATCH_UPDATER_NAME " - Download No Update Required - All Files Current";
    window.HideBusyDisplay();
}

}  // namespace

void frmSwiftPatch::ShowComparisonOutcome(std::int16_t result, const std::string& name) {
    switch (result) {
        case comparison::kNamedFileMissing:
            ReportMissingProgram(*this);
            break;
        case comparison::kBadName:
            ReportBadName(*this, name);
            break;
        case comparison::kNothingOffered:
            ReportNothingOffered(*this);
            break;
        case comparison::kNothingNewer:
            ReportNothingNewer(*this);
            break;
        case comparison::kNewerOffered:
            if (BuildSignature::IsWanted() &&
                IsDowngrade(check.installedProductVersion, stagedVersion.ProductVersion)) {
                lblTolvexVersion.Visible = false;
                ReportLatestVersion();
            } else {
                OfferDownloadedBuild();
            }
            break;
        default:
            break;
    }
    downloadMode = DownloadMode::kNone;
}

}  // namespace swiftpatch
