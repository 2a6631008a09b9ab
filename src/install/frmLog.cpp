#include "install/frmLog.h"

#include "mainwindow/frmSwiftPatch.h"
#include "runtime/events.h"
#include "runtime/files.h"
#include "runtime/strings.h"
#include "shared/paths.h"

namespace swiftpatch {
namespace {

constexpr int kFileNumber = 1;

FormDesign LogDesign() {
    FormDesign design;
    design.caption = "Error Log File";
    design.width = 344;
    design.height = 252;
    design.border = BorderStyle::kFixedSingle;
    return design;
}

/// All lines, collected before the box gets them: setting the box once a line takes time that
/// grows with the square of the log.
std::string ReadLines() {
    std::string text;
    while (!EndOfFile(kFileNumber)) {
        text += LineInput(kFileNumber) + kCrLf;
    }
    return text;
}

}  // namespace

frmLog::frmLog()
    : Form("frmLog", LogDesign()),
      txtLogFile(*this, 401, "txtLogFile"),
      cmdMain(*this, 402, "cmdMain") {
    txtLogFile.Place({8, 8, 328, 216}, {.fixedPitch = true, .multiLine = true});
    txtLogFile.AccessibleName = "Error log";
    cmdMain.Place({290, 231, 46, 14});
    cmdMain.Caption.Design("Main");
    cmdMain.Default = true;
    cmdMain.Cancel = true;
    cmdMain.Click = [this] { cmdMain_Click(); };
    SetTabOrder({&cmdMain, &txtLogFile});
}

void frmLog::Form_Load() { LoadLogFile(); }

void frmLog::LoadLogFile() {
    const std::string path = AppFile(LogFileName);
    if (LogFileName.empty() || !FileExists(path)) {
        return;
    }
    txtLogFile.Text = "";
    OpenForInput(path, kFileNumber);
    try {
        txtLogFile.Text = ReadLines();
    } catch (const RuntimeError&) {
        CloseFile(kFileNumber);
        throw;
    }
    CloseFile(kFileNumber);
}

void frmLog::cmdMain_Click() {
    DoEvents();
    Hide();
    frmSwiftPatch::Instance.Get().Show();
    Unload();
}

void frmLog::Form_Unload() {
    // Closed by its caption, the viewer leaves no window behind: the main window is hidden.
    if (frmSwiftPatch::Instance.Exists() && !frmSwiftPatch::Instance.Get().Visible()) {
        frmSwiftPatch::Instance.Get().Show();
    }
    Instance.Release();
}

}  // namespace swiftpatch
