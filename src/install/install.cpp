#include "install/copy_error.h"
#include "install/go_back.h"
#include "install/modVersion.h"
#include "install/running_program.h"
#include "mainwindow/frmSwiftPatch.h"
#include "runtime/app.h"
#include "runtime/events.h"
#include "runtime/files.h"
#include "runtime/msgbox.h"
#include "shared/branding.h"
#include "shared/paths.h"

namespace swiftpatch {
namespace {

/// The product version of the installed program; empty when there is no program.
std::string InstalledVersion() {
    if (FileExists(AppFile(kMainProgram))) {
        return modVersion::GetFileVersion(AppFile(kMainProgram)).ProductVersion;
    }
    const std::string folder = "'" + App::Path() + "'.";
    MsgBox(SWIFTPATCH_PROGRAM " not found in " + folder +
           "\r\n\r\nInstalling " SWIFTPATCH_PROGRAM " in " + folder);
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
        MsgBox("Install Error!\r\n\r\nCannot install the updated " SWIFTPATCH_SHORT_NAME
               " program while\r\n" SWIFTPATCH_SHORT_NAME " is still running.",
               msgbox::kCritical);
        return;
    }
    const std::string version = InstalledVersion();
    if (!FileExists(AppFile(kStagedBuild))) {
        MsgBox("The update file '" SWIFTPATCH_STAGED_PROGRAM "'\r\nnot found in '" + App::Path() +
               "'.\r\n" SWIFTPATCH_PROGRAM " not updated.");
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
        "The update file '" SWIFTPATCH_STAGED_PROGRAM
        "' is not the one that the maker of " SWIFTPATCH_NAME_IN_TEXT
        " signed.\r\n" SWIFTPATCH_PROGRAM " not updated.",
        msgbox::kCritical);
    FocusNextStep();
}

void frmSwiftPatch::BackUp(const std::string& version, std::int32_t press) {
    const std::string backup = BackupName(version);
    if (version.empty() || FileExists(AppFile(backup))) {
        return;
    }
    MsgBox("A backup file for your current version of " SWIFTPATCH_SHORT_NAME_IN_TEXT
           " was not found in\r\n'" +
           App::Path() + "'.\r\n\r\nMaking a copy of " SWIFTPATCH_PROGRAM " as '" + backup + "'");
    if (!IsLastPress(press)) {
        return;
    }
    try {
        FileCopy(AppFile(kMainProgram), AppFile(backup));
    } catch (const RuntimeError& error) {
        MsgBox(CopyError(SWIFTPATCH_PROGRAM " backup", error));
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
        MsgBox(CopyError(SWIFTPATCH_STAGED_PROGRAM " to " SWIFTPATCH_PROGRAM, error));
        return true;
    }
}

void frmSwiftPatch::ShowInstalled() {
    cmdInstall.Visible = false;
    WithdrawWayBack();
    lblTolvexVersion.Caption = SWIFTPATCH_NAME_IN_TEXT " Version installed: " +
                               modVersion::GetFileVersion(AppFile(kMainProgram)).ProductVersion;
    lblTolvexVersion.Visible = true;
    lblAnimationMsg.Caption =
        "You have installed the latest version of " SWIFTPATCH_NAME_IN_TEXT ".";
    lblStatus.Caption = "";
    cmdClose.Enabled = true;
    FocusNextStep();
}

}  // namespace swiftpatch
