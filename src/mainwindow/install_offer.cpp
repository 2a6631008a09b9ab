#include "install/go_back.h"
#include "mainwindow/frmSwiftPatch.h"
#include "shared/branding.h"
#include "shared/paths.h"
#include "shared/shared_state.h"

namespace swiftpatch {
namespace {

void SayThatABuildIsThere(frmSwiftPatch& window) {
    window.tmrCheckVersion.Enabled = false;
    window.lblAnimationMsg.Caption =
        "You have downloaded the latest version of " SWIFTPATCH_NAME_IN_TEXT;
}

void ShowInstallButton(frmSwiftPatch& window) {
    window.cmdInstall.Visible = true;
    window.cmdInstall.Enabled = true;
    window.lblStatus.Caption = "Click on Install Button.";
    window.Pointer = MousePointer::kDefault;
}

void WaitForPressOrInstall(frmSwiftPatch& window, const std::string& version) {
    window.cmdClose.Enabled = true;
    window.FocusNextStep();
    if (WasGoneBackFrom(version)) {
        window.lblAnimationMsg.Caption = "You went back from version " + version +
                                         ".\r\nIt is installed only when you press Install.";
    } else if (shared.InstallAtOnce) {
        window.cmdInstall_Click();
    }
}

}  // namespace

void frmSwiftPatch::ShowVersionOnOffer(const std::string& version) {
    lblTolvexVersion.Caption = SWIFTPATCH_NAME_IN_TEXT " Version available to install: " + version;
}

void frmSwiftPatch::OfferInstall() {
    SayThatABuildIsThere(*this);
    ShowVersionOnOffer(check.stagedProductVersion);
    lblTolvexVersion.Visible = true;
    ShowAnimation("", "");
    ShowInstallButton(*this);
    WaitForPressOrInstall(*this, check.stagedProductVersion);
}

void frmSwiftPatch::OfferDownloadedBuild() {
    SayThatABuildIsThere(*this);
    Animation1.Stop();
    ShowInstallButton(*this);
    stagedVersion = modVersion::GetFileVersion(AppFile(kStagedBuild));
    ShowVersionOnOffer(stagedVersion.ProductVersion);
    WaitForPressOrInstall(*this, stagedVersion.ProductVersion);
}

}  // namespace swiftpatch
