#include "install/modVersion.h"
#include "mainwindow/frmSwiftPatch.h"
#include "net/header_probe.h"
#include "net/modDeclarations.h"
#include "net/wait.h"
#include "runtime/clock.h"
#include "runtime/events.h"
#include "runtime/files.h"
#include "runtime/msgbox.h"
#include "shared/branding.h"
#include "shared/paths.h"
#include "shared/shared_state.h"

namespace swiftpatch {
namespace {

constexpr std::int32_t kTransferTimeout = 15;  // Seconds.

void ReportInternetError(const RuntimeError& error) {
    MsgBox("Internet Error: " + std::to_string(error.Number()) + "\r\n\r\n" + error.Description() +
               "\r\n\r\nSource: [frmSwiftPatch] tmrCheckVersion_Timer()",
           msgbox::kInformation);
}

struct Clocks {
    DateTime utc;
    DateTime local;
};

/// Both clocks within the same second; otherwise the offset between them could be a minute off.
Clocks ReadClocks() {
    while (true) {
        const DateTime utc = UtcNow();
        const DateTime local = Now();
        if (UtcNow() == utc) {
            return {utc, local};
        }
    }
}

std::int32_t LengthIfThere(const std::string& path) { return FileExists(path) ? FileLen(path) : 0; }

}  // namespace

void frmSwiftPatch::tmrCheckVersion_Timer() {
    try {
        AnnounceCheck();
        if (!FindConnection()) {
            return;
        }
        Inet1.RequestTimeout = kTransferTimeout;
        if (!FetchMissingAnimation()) {
            return;
        }
        ReadServerBuild();
        if (check.serverSize < kSmallestBuild) {
            ReportBadDownloadLink();
            return;
        }
        ReadDates();
        ReadLocalBuilds();
        txtDebug.Text = UpdateInformation(check);
        CheckOutcome outcome = Decide(check);
        if (outcome != CheckOutcome::kLatestVersion && BuildSignature::IsWanted()) {
            if (!ObtainSignature()) {
                return;
            }
            outcome = DecideOnSignedBuild(outcome);
        }
        switch (outcome) {
            case CheckOutcome::kLatestVersion:
                ReportLatestVersion();
                break;
            case CheckOutcome::kReadyToInstall:
                OfferInstall();
                break;
            case CheckOutcome::kDownload:
                StartDownload();
                break;
        }
    } catch (const RuntimeError& error) {
        ReportInternetError(error);
        Pointer = MousePointer::kDefault;
        cmdClose.Enabled = true;
        FocusNextStep();
    }
}

void frmSwiftPatch::AnnounceCheck() {
    Pointer = MousePointer::kHourglass;
    tmrCheckVersion.Enabled = false;
    lblAnimationMsg.Caption = "checking connection to " SWIFTPATCH_NAME_IN_TEXT " servers...";
    lblAnimationMsg.Refresh();
    check = {};
    check.serverUrl = shared.ServerDownloadPath + kStagedBuild;
    DoEvents();
    WaitSeconds(1);
}

bool frmSwiftPatch::FindConnection() {
    if (connectivityDone) {
        return true;
    }
    connectivityDone = true;
    if (check_internet_connectivity(*this, check.serverUrl)) {
        lblAnimationMsg.Caption = SWIFTPATCH_NAME_IN_TEXT " server\r\nconnection available.";
        return true;
    }
    WaitSeconds(2);
    lblAnimationMsg.Caption = "No connection to the " SWIFTPATCH_NAME_IN_TEXT " update server.";
    std::string text = "\r\nNo connection to the " SWIFTPATCH_NAME_IN_TEXT
                       " update server.\r\n\r\n"
                       "Please check your internet connection and try again later.";
    error_Message(text, message_style::kText, "No Connection");
    return false;
}

bool frmSwiftPatch::FetchMissingAnimation() {
    // Where builds have to be signed nothing is fetched that nobody has signed.
    if (FileExists(AppFile(kBusyAnimation)) || BuildSignature::IsWanted()) {
        return true;
    }
    const std::string url = shared.ServerDownloadPath + kBusyAnimation;
    expectedSize = GetHTTPFileSize(*this, url);
    if (expectedSize < kSmallestAnimation) {
        std::string text = "The download link your are requesting is invalid.\r\nThe link: " + url +
                           " is not available.";
        error_Message(text, message_style::kText, "Incorrect Download Link");
        return false;
    }
    downloadMode = DownloadMode::kAnimation;
    lblAnimationMsg.Caption = "Downloading\r\nmissing AVI file.";
    lblStatus.Caption = "0 % download completed";
    Request(url);
    // Nothing may be requested while the file comes in. A missing animation is never a reason to
    // miss an update, so the check goes on even when it failed; Retry would start a second check.
    WaitUntilIdle();
    cmdRetry.Visible = false;
    TaskbarProgress = taskbar::kNothing;
    return true;
}

void frmSwiftPatch::ReadServerBuild() {
    check.serverSize = GetHTTPFileSize(*this, check.serverUrl);
    expectedSize = check.serverSize;
    check.installedLength = LengthIfThere(AppFile(kMainProgram));
}

void frmSwiftPatch::ReadDates() {
    const Clocks clocks = ReadClocks();
    const std::int64_t offset = MinutesBetween(clocks.utc, clocks.local);
    shared.GmtOffset = static_cast<double>(offset);
    check.gmtOffsetHours = offset / 60;
    check.serverDateText = GetHTTPFileDate(*this, check.serverUrl);
    check.serverDate = AddMinutes(ParseDateTime(check.serverDateText).value(), offset);
    const std::string staged = AppFile(kStagedBuild);
    check.ageGap = FileExists(staged) ? MinutesBetween(FileDateTime(staged), check.serverDate) : 1;
}

void frmSwiftPatch::ReadLocalBuilds() {
    const std::string staged = AppFile(kStagedBuild);
    check.stagedProductVersion = modVersion::GetFileVersion(staged).ProductVersion;
    check.installedProductVersion =
        modVersion::GetFileVersion(AppFile(kMainProgram)).ProductVersion;
    // Looked up only now: a staged build without a version block has just been deleted.
    check.stagedLength = LengthIfThere(staged);
    if (FileExists(staged)) {
        check.stagedDate = FileDateTime(staged);
    }
}

void frmSwiftPatch::ReportBadDownloadLink() {
    std::string text =
        "The download link is invalid.\r\n\r\nThe link: " + check.serverUrl + " is not available.";
    error_Message(text, message_style::kText, "Bad Download Link");
    ShowAnimation("", "");
    cmdClose.Enabled = true;
}

void frmSwiftPatch::ReportLatestVersion() {
    tmrCheckVersion.Enabled = false;
    lblAnimationMsg.Caption = "You are running the latest version of " SWIFTPATCH_NAME_IN_TEXT;
    ShowAnimation("", "");
    cmdInstall.Visible = false;
    ProgressBar1.Visible = false;
    lblStatus.Caption = "";
    Pointer = MousePointer::kDefault;
    cmdClose.Enabled = true;
    FocusNextStep();
}

void frmSwiftPatch::StartDownload() {
    lblStatus.Caption = "0 % download completed";
    downloadMode = DownloadMode::kBuild;
    Request(check.serverUrl);
    Pointer = MousePointer::kDefault;
}

void frmSwiftPatch::Request(const std::string& url) {
    WaitUntilIdle();
    Inet1.Execute("", "QUIT");
    WaitUntilIdle();
    Inet1.Execute(url, "GET");
}

void frmSwiftPatch::WaitUntilIdle() {
    while (Inet1.StillExecuting()) {
        DoEventsResting();
    }
}

}  // namespace swiftpatch
