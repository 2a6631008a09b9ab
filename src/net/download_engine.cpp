#include <algorithm>

#include "mainwindow/frmSwiftPatch.h"
#include "net/chunk_count.h"
#include "runtime/clock.h"
#include "runtime/events.h"
#include "runtime/files.h"
#include "runtime/msgbox.h"
#include "runtime/numbers.h"
#include "runtime/strings.h"
#include "shared/branding.h"
#include "shared/paths.h"

namespace swiftpatch {
namespace {

constexpr std::size_t kChunk = 1024;
constexpr std::int32_t kNoBytes = -1;           // The upper bound of an empty chunk.
constexpr std::uint32_t kAnimationPause = 100;  // Milliseconds a chunk.

/// The part that came stays on disk; closed, so that the next attempt can replace it. What breaks
/// now is not told: the first error is the one that counts, and may offer Retry.
void CloseBroken(int file) {
    try {
        CloseFile(file);
    } catch (const RuntimeError&) {
        return;
    }
}

}  // namespace

void frmSwiftPatch::Inet1_StateChanged(std::int16_t state) {
    const std::string animation = AppFile(kBusyAnimation);
    try {
        switch (state) {
            case inet_state::kConnecting:
                ShowAnimation(animation, "Sending connection request...");
                break;
            case inet_state::kConnected:
                ShowAnimation(animation, "Connected...");
                break;
            case inet_state::kRequesting:
                ShowAnimation(animation, "Requesting file...");
                break;
            case inet_state::kDisconnecting:
                ShowAnimation(animation, "Disconnecting from server...");
                break;
            case inet_state::kError:
                ShowTransferFault();
                if (downloadMode == DownloadMode::kSignature) {
                    // Without the signature there is no update: nothing goes on, so it is told.
                    throw RuntimeError(error_number::kRequestTimedOut);
                }
                ShowTransferError();
                break;
            case inet_state::kResponseCompleted:
                ShowTransferFault();
                if (downloadMode == DownloadMode::kSignature) {
                    ReceiveSignature();
                } else if (!headerProbe) {
                    ReceiveBody();
                }
                break;
            default:
                break;
        }
    } catch (const RuntimeError& error) {
        ReportBrokenTransfer(error);
    }
}

void frmSwiftPatch::ShowTransferError() {
    DoEvents();
    if (!Inet1.StillExecuting()) {
        Pointer = MousePointer::kDefault;
        cmdClose.Enabled = true;
        FocusNextStep();
    }
}

void frmSwiftPatch::ReceiveBody() {
    const int file = FreeFile();
    cmdClose.Enabled = false;
    if (!OpenTarget(file)) {
        return;
    }
    try {
        if (!ReceiveChunks(file)) {
            return;
        }
    } catch (const RuntimeError&) {
        CloseBroken(file);
        throw;
    }
    CloseFile(file);
    DoEvents();
    FollowUp();
}

bool frmSwiftPatch::OpenTarget(int file) {
    if (downloadMode == DownloadMode::kAnimation) {
        lblAnimationMsg.Caption = "downloading ....\r\nmissing AVI file.";
        OpenForBinary(AppFile(kBusyAnimation), file);
    }
    if (downloadMode != DownloadMode::kBuild) {
        // Any other mode opens nothing: the first write to the unopened number is an error.
        return true;
    }
    lblAnimationMsg.Caption = "downloading the\r\nlatest " SWIFTPATCH_NAME_IN_TEXT " version.";
    const std::string target = AppFile(kStagedBuild);
    try {
        if (FileExists(target)) {
            Kill(target);
        }
    } catch (const RuntimeError& error) {
        ReportDeletionFailure(error);
        return false;
    }
    OpenForBinary(target, file);
    if (BuildSignature::IsWanted()) {
        signature.BeginBuild();
    }
    return true;
}

bool frmSwiftPatch::ReceiveChunks(int file) {
    std::int32_t received = 0;
    std::int16_t filled = 0;
    bool done = false;
    while (!done) {
        const Bytes chunk = Inet1.GetChunk(kChunk);
        const std::int32_t upperBound = static_cast<std::int32_t>(chunk.size()) - 1;
        received = CountChunk(received, upperBound);
        if (expectedSize < 1) {
            // The file stays open and empty, deliberately.
            std::string text =
                "Error downloading the file from the server as expected.\r\n"
                "The file returned was not the correct size and/or format expected.";
            error_Message(text, message_style::kText, "Error Downloading File");
            return false;
        }
        filled = ShowReceived(received);
        if (downloadMode == DownloadMode::kAnimation) {
            Sleep(kAnimationPause);
        }
        PutBytes(file, chunk.View());
        if (BuildSignature::IsWanted()) {
            signature.AddToBuild(chunk.View());
        }
        done = upperBound == kNoBytes;
        DoEventsPaced();
    }
    FlushFile(file);
    if (filled == 100) {
        lblStatus.Caption = "100 % completed";
        lblStatus.BackColor = Color::kButtonFace;
        ProgressBar1.Value = ProgressBar1.Max.Get();
    }
    return true;
}

std::int16_t frmSwiftPatch::ShowReceived(std::int32_t received) {
    const std::int16_t percentage =
        ToInteger(static_cast<double>(received) / static_cast<double>(expectedSize) * 100);
    lblStatus.Caption = NumberedText(percentage, " % download completed");
    lblStatus.BackColor = Color::kButtonFace;
    // More may come in than was expected: the text says so, the bar is full.
    const std::int16_t filled = std::clamp<std::int16_t>(percentage, 0, 100);
    ProgressBar1.Value = filled;
    TaskbarProgress = filled;
    lblStatus.Refresh();
    DoEventsPaced();
    return filled;
}

void frmSwiftPatch::FollowUp() {
    TaskbarProgress = taskbar::kNothing;
    if (downloadMode != DownloadMode::kBuild) {
        tmrCheckVersion.Enabled = false;
        cmdClose.Enabled = true;
        return;
    }
    // Before anything looks into the file.
    if (BuildSignature::IsWanted() && !IsDownloadSigned()) {
        downloadMode = DownloadMode::kNone;
        return;
    }
    ProgressBar1.Value = 0;
    lblStatus.Caption = "";
    ShowAnimation(AppFile(kBusyAnimation), "Checking for updates...");
    std::int16_t result = 0;
    CompareProductVersions(kMainProgram, result);
    ShowComparisonOutcome(result, kMainProgram);
}

void frmSwiftPatch::ReportDeletionFailure(const RuntimeError& error) {
    Inet1.Cancel();
    std::string text = "Error: " + std::to_string(error.Number()) + kCrLf + error.Description();
    if (error.Number() == error_number::kPathFileAccess) {
        text += "\r\n\r\n" SWIFTPATCH_STAGED_PROGRAM " is probably running.";
    }
    MsgBox(text);
    ShowAnimation("", "");
    TaskbarProgress = taskbar::kFailure;
    lblStatus.Caption = "Download Failed.";
    cmdClose.Enabled = true;
    Pointer = MousePointer::kDefault;
    FocusNextStep();
}

void frmSwiftPatch::ReportBrokenTransfer(const RuntimeError& error) {
    std::string text = "Error # " + std::to_string(error.Number()) + kCrLf + error.Description() +
                       "\r\nThe server or internet connection has timed out.\r\n"
                       "Please check your internet connection.";
    error_Message(text, message_style::kText, "Internet Connection Timeout");
}

}  // namespace swiftpatch
