// The part of the check that there is where builds have to be signed.
#include "mainwindow/frmSwiftPatch.h"
#include "runtime/files.h"
#include "shared/branding.h"
#include "shared/paths.h"

namespace swiftpatch {

bool frmSwiftPatch::ObtainSignature() {
    if (!signature.ReadKeys()) {
        RefuseUpdate("Signing Key Invalid",
                     "The signing key of this program cannot be read.\r\n"
                     "No update can be installed.");
        return false;
    }
    if (!FetchSignature()) {
        return false;
    }
    if (!signature.IsThere()) {
        RefuseUpdate(
            "Signature Missing",
            "The update on the server is not signed by the maker of " SWIFTPATCH_NAME_IN_TEXT
            ".\r\n"
            "It was not downloaded. Your program has not been changed.");
        return false;
    }
    return true;
}

CheckOutcome frmSwiftPatch::DecideOnSignedBuild(CheckOutcome outcome) {
    if (outcome != CheckOutcome::kReadyToInstall) {
        return outcome;
    }
    lblAnimationMsg.Caption = "Checking the signature...";
    lblAnimationMsg.Refresh();
    std::optional<LockedFile> build;
    if (!LockSignedBuild(build)) {
        return CheckOutcome::kDownload;
    }
    const std::string offered = modVersion::ReadFileVersion(AppFile(kStagedBuild)).ProductVersion;
    return IsDowngrade(check.installedProductVersion, offered) ? CheckOutcome::kLatestVersion
                                                               : outcome;
}

bool frmSwiftPatch::IsDownloadSigned() {
    signature.EndBuild();
    if (signature.Fits()) {
        return true;
    }
    // Perhaps the server got another build between the two requests. Once is enough for that.
    if (!FetchSignature()) {
        return false;
    }
    if (signature.Fits()) {
        return true;
    }
    RefuseUpdate("Signature Invalid",
                 "The downloaded update was not signed by the maker of " SWIFTPATCH_NAME_IN_TEXT
                 ".\r\n"
                 "The file could have been tampered with.\r\n"
                 "Your program has not been changed.");
    return false;
}

void frmSwiftPatch::RefuseUpdate(const std::string& title, std::string text) {
    DeleteRefusedBuild();
    cmdInstall.Visible = false;
    error_Message(text, message_style::kText, title);
}

}  // namespace swiftpatch
