#include "install/modVersion.h"
#include "install/running_program.h"
#include "mainwindow/frmSwiftPatch.h"
#include "runtime/app.h"
#include "runtime/events.h"
#include "runtime/files.h"
#include "runtime/msgbox.h"
#include "runtime/strings.h"
#include "shared/paths.h"

namespace swiftpatch {
namespace {

std::string CopyError(const std::string& what, const RuntimeError& error) {
    return what + " File Copy Error: " + std::to_string(error.Number()) + kCrLf +
           error.Description();
}

/// The product version of the installed program; empty when there is no program.
std::string InstalledVersion() {
    if (FileExists(AppFile(kMainProgram))) {
        return modVersion::GetFileVersion(AppFile(kMainProgram)).ProductVersion;
    }
    const std::string folder = "'" + App::Path() + "'.";
    MsgBox("tolvex.exe not found in " + folder + "\r\n\r\nInstalling tolvex.exe in " + folder);
    return {};
}

}  // namespace

void frmSwiftPatch::cmdInstall_Click() {
    try {
        InstallStagedBuild();
    } catch (const RuntimeError&) {
        // The report asks the error for a member "num", which it does not have. That second error
        // is trapped by nobody and ends the program with the system's box. Deliberate.
        throw RuntimeError(error_number::kNoSuchMember);
    }
}

void frmSwiftPatch::InstallStagedBuild() {
    // Whatever is asked or waited for, Install can be pressed again meanwhile; a wait that crosses
    // midnight does not even end. The last press wins: it has done the whole install by the time
    // that an earlier one goes on, which would take the new build for the old one and back it up.
    const std::int32_t press = ++installPresses_;
    const bool running = GetWindowHandles(*this);
    if (!IsLastPress(press)) {
        return;
    }
    if (running) {
        MsgBox(
            "Install Error!\r\n\r\nCannot install the updated Tolvex program while\r\n"
            "Tolvex is still running.",
            msgbox::kCritical);
        return;
    }
    const std::string version = InstalledVersion();
    if (!FileExists(AppFile(kStagedBuild))) {
        MsgBox("The update file 'tolvex30.exe'\r\nnot found in '" + App::Path() +
               "'.\r\ntolvex.exe not updated.");
        return;
    }
    // Nobody can exchange a build that has to be signed from here on until it has been copied.
    std::optional<LockedFile> build;
    const bool mayBeInstalled = MayBeInstalled(build, version);
    if (!IsLastPress(press)) {
        if (!mayBeInstalled) {
            // The press that has told so could not delete what this one held.
            build.reset();
            DeleteRefusedBuild();
        }
        return;
    }
    if (mayBeInstalled) {
        BackUp(version, press);
        if (!IsLastPress(press)) {
            return;
        }
    }
    if (!mayBeInstalled || !ReplaceMainProgram()) {
        build.reset();
        RefuseToInstall();
        return;
    }
    ShowInstalled();
}

bool frmSwiftPatch::MayBeInstalled(std::optional<LockedFile>& build, const std::string& installed) {
    if (!BuildSignature::IsWanted()) {
        return true;
    }
    return LockSignedBuild(build) &&
           !IsDowngrade(installed,
                        modVersion::ReadFileVersion(AppFile(kStagedBuild)).ProductVersion);
}

bool frmSwiftPatch::LockSignedBuild(std::optional<LockedFile>& build) {
    try {
        build.emplace(AppFile(kStagedBuild));
        signature.ReadBuild(*build, DoEventsPaced);
        return signature.Fits();
    } catch (const RuntimeError&) {
        return false;
    }
}

void frmSwiftPatch::RefuseToInstall() {
    cmdInstall.Visible = false;  // First: what comes after it pumps.
    DeleteRefusedBuild();
    ShowAnimation("", "");
    TaskbarProgress = taskbar::kFailure;
    lblTolvexVersion.Visible = false;
    lblAnimationMsg.Caption = "";
    chkRunTolvex.Value = CheckState::kUnchecked;
    cmdClose.Enabled = true;
    MsgBox(
        "Install Error!\r\n\r\n"
        "The update file 'tolvex30.exe' is not the one that the maker of q-tolvex signed.\r\n"
        "tolvex.exe not updated.",
        msgbox::kCritical);
    FocusNextStep();
}

void frmSwiftPatch::BackUp(const std::string& version, std::int32_t press) {
    const std::string backup = "tolvex." + version + ".exe";
    if (version.empty() || FileExists(AppFile(backup))) {
        return;
    }
    MsgBox("A backup file for your current version of tolvex was not found in\r\n'" + App::Path() +
           "'.\r\n\r\nMaking a copy of tolvex.exe as '" + backup + "'");
    if (!IsLastPress(press)) {
        return;
    }
    try {
        FileCopy(AppFile(kMainProgram), AppFile(backup));
    } catch (const RuntimeError& error) {
        MsgBox(CopyError("tolvex.exe backup", error));
    }
}

/// False when the copy is not the build that was signed.
bool frmSwiftPatch::ReplaceMainProgram() {
    std::function<bool(LockedFile&)> isSigned;
    if (BuildSignature::IsWanted()) {
        isSigned = [this](LockedFile& copy) { return signature.IsSameBuild(copy); };
    }
    try {
        return FileCopyIf(AppFile(kStagedBuild), AppFile(kMainProgram), isSigned);
    } catch (const RuntimeError& error) {
        // The stage goes on to report its success all the same, deliberately.
        MsgBox(CopyError("tolvex30.exe to tolvex.exe", error));
        return true;
    }
}

void frmSwiftPatch::ShowInstalled() {
    cmdInstall.Visible = false;
    lblTolvexVersion.Caption = "q-tolvex Version installed: " +
                               modVersion::GetFileVersion(AppFile(kMainProgram)).ProductVersion;
    lblTolvexVersion.Visible = true;
    lblAnimationMsg.Caption = "You have installed the latest version of q-tolvex.";
    lblStatus.Caption = "";
    cmdClose.Enabled = true;
    FocusNextStep();
}

}  // namespace swiftpatch
