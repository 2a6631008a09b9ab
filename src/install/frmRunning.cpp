#include "install/frmRunning.h"

#include "runtime/strings.h"
#include "shared/branding.h"

namespace swiftpatch {
namespace {

FormDesign RunningDesign() {
    FormDesign design;
    design.caption = "Program Is Still Running";
    design.width = 280;
    design.height = 136;
    design.border = BorderStyle::kFixedDialog;
    return design;
}

constexpr const char* kHelp =
    "\r\n\r\nIf you continue to have problems with " SWIFTPATCH_UPDATER_NAME_IN_TEXT
    "\r\n"
    "Please call " SWIFTPATCH_NAME " Technical Support at\r\n" SWIFTPATCH_SUPPORT_LINE;

}  // namespace

frmRunning::frmRunning()
    : Form("frmRunning", RunningDesign()),
      lblWarning(*this, 301, "lblWarning"),
      cmdExit(*this, 302, "cmdExit") {
    lblWarning.Place({10, 8, 260, 102});
    lblWarning.Caption.Design("The program you are trying to update is still running.");
    cmdExit.Place({105, 116, 70, 14});
    cmdExit.Caption.Design("E&xit Update");
    cmdExit.Default = true;
    cmdExit.Cancel = true;
    cmdExit.Click = [this] { cmdExit_Click(); };
}

void frmRunning::Form_Load() {
    if (!code.empty()) {
        Caption = code;
    }
    if (program.empty()) {
        lblWarning.Caption = message + kHelp;
        return;
    }
    const std::string name = Replace(program, kCrLf, "");
    lblWarning.Caption = "The program " + name +
                         " that you are\r\ntrying to update is still running."
                         "\r\n\r\nPlease close " +
                         name + " before\r\nattempting a swift patch again." + kHelp;
}

void frmRunning::cmdExit_Click() { Unload(); }

}  // namespace swiftpatch
