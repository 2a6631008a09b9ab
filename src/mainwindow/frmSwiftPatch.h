#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "components/clsSysInfo.h"
#include "install/build_signature.h"
#include "install/modVersion.h"
#include "mainwindow/check_facts.h"
#include "net/download_watchdog.h"
#include "runtime/controls.h"
#include "runtime/form.h"
#include "runtime/inet.h"
#include "runtime/runtime_error.h"

namespace swiftpatch {

/// What the transfer under way is for.
enum class DownloadMode : std::int16_t { kNone = 0, kBuild = 1, kAnimation = 2, kSignature = 3 };

/// What kind of message error_Message is handed; other numbers count as a text.
namespace message_style {
inline constexpr std::int16_t kText = 0;
inline constexpr std::int16_t kProgramName = 1;  ///< Of a program that has to be closed.
}  // namespace message_style

/// The updater's working window. Its event procedures are the stages of a run; each lives in the
/// folder of its stage. Every stage reports through these controls and error_Message.
class frmSwiftPatch : public Form {
public:
    frmSwiftPatch();

    static inline FormInstance<frmSwiftPatch> Instance;

    TextBox txtDebug;
    Timer tmrDownloadTimeout;
    CheckBox chkRunTolvex;
    CommandButton cmdInstall;
    CommandButton cmdRetry;
    CommandButton cmdReadLog;
    Timer tmrCheckVersion;
    CommandButton cmdClose;
    CommandButton cmdGoBack;
    Inet Inet1;
    ProgressBar ProgressBar1;
    Frame fraMessages;
    Animation Animation1;
    Label lblAnimationMsg;
    ListView lstStat;  // Stays empty for the whole run, deliberately.
    Label lblTolvexVersion;
    Label lblSimulation;  // Stays hidden: a real download is no simulation.
    Label lblVersion;
    Label lblStatus;

    // mainwindow/
    void Form_Load() override;
    void tmrCheckVersion_Timer();
    /// Starts the busy animation at `path`, or stops it when the path is empty or names no file.
    /// Only the path is used; callers hand over a message that is not shown, deliberately.
    void ShowAnimation(const std::string& path, const std::string& message);
    /// Reports the failure of a running stage in a dialog titled `code` and puts the window into
    /// its stopped state. `style` is one of message_style. `message` comes back with a CR LF
    /// appended. Pumps.
    void error_Message(std::string& message, std::int16_t style, const std::string& code);
    /// Compares the file `name` of the application folder with the staged build, which the window
    /// shows as the version available to install. `result` is one of comparison's values. Errors
    /// are not trapped. Pumps.
    void CompareProductVersions(const std::string& name, std::int16_t& result);
    /// Shows what the comparison of the received build with the file `name` found. Pumps.
    void ShowComparisonOutcome(std::int16_t result, const std::string& name);
    /// Pumps.
    void HideBusyDisplay();
    /// Puts the window above all that are not topmost. Pumps.
    void MakeTopMost();
    /// Says what is known of a failed request, in the report, where it changes nothing for who does
    /// not look for it.
    void ShowTransferFault();
    /// To be called where a stage leaves the next step to the user: puts the keyboard on it.
    void FocusNextStep();

    // net/
    void tmrDownloadTimeout_Timer();
    void cmdRetry_Click();
    void Inet1_StateChanged(std::int16_t state);

    // install/
    void cmdInstall_Click();
    void cmdGoBack_Click();
    void cmdClose_Click();
    void cmdReadLog_Click();
    void Form_QueryUnload(bool& cancel) override;
    void Form_Unload() override;

    // State that the stages share.
    bool checkArmed = false;        ///< The first check has been armed.
    bool connectivityDone = false;  ///< The connectivity check has been done in this run.
    bool retry = false;             ///< Set by Retry; nothing tests it.
    bool headerProbe = false;       ///< A HEAD probe runs: its end is not the end of a download.
    bool programMissing = false;    ///< The comparison found no main program.
    DownloadMode downloadMode = DownloadMode::kNone;
    std::int32_t expectedSize = 0;  ///< Content-length of the file on offer; -1 unknown.
    std::int32_t topMost = 0;       ///< What the last switch to topmost returned.
    DownloadWatchdog watchdog;
    CheckFacts check;
    BuildSignature signature;
    modVersion::FileVersionRecord stagedVersion;
    std::optional<clsSysInfo>
        systemInformation;  ///< Kept for the form's lifetime; nothing reads it.

private:
    void Design();
    void PlaceControls();
    void WireEvents();
    /// Runs an event procedure that can change what is installed or begin to do so. The way back is
    /// closed for as long as one runs, a transfer is under way or a check is about to begin.
    void RunStage(const std::function<void()>& stage);
    void ShowOwnVersion();
    void ShowBetaNotice();
    /// Shows the button of the error log when there is a log to be read.
    void OfferErrorLog();
    /// Leave the installation to the user, or begin it where it is to come at once: of a build that
    /// was there before this run, and of one that has just come in.
    void OfferInstall();
    void OfferDownloadedBuild();
    void ShowVersionOnOffer(const std::string& version);

    // The steps of tmrCheckVersion_Timer.
    void AnnounceCheck();
    bool FindConnection();
    bool FetchMissingAnimation();
    void ReadServerBuild();
    void ReadDates();
    void ReadLocalBuilds();
    void ReportBadDownloadLink();
    void ReportLatestVersion();
    void StartDownload();

    // What comes on top where builds have to be signed.
    bool ObtainSignature();
    CheckOutcome DecideOnSignedBuild(CheckOutcome outcome);
    bool IsDownloadSigned();
    bool FetchSignature();
    void ReceiveSignature();
    void RefuseUpdate(const std::string& title, std::string text);

    // For both.
    void Request(const std::string& url);
    void WaitUntilIdle();

    // The steps of Inet1_StateChanged.
    void ShowTransferError();
    void ReceiveBody();
    bool OpenTarget(int file);
    bool ReceiveChunks(int file);
    std::int16_t ShowReceived(std::int32_t received);
    void FollowUp();
    void ReportDeletionFailure(const RuntimeError& error);
    void ReportBrokenTransfer(const RuntimeError& error);

    // The steps of cmdInstall_Click.
    void InstallStagedBuild();
    bool MayBeInstalled(std::optional<LockedFile>& build, const std::string& installed);
    bool LockSignedBuild(std::optional<LockedFile>& build);
    void RefuseToInstall();
    bool IsLastPress(std::int32_t press) const { return press == installPresses_; }
    void BackUp(const std::string& version, std::int32_t press);
    bool ReplaceMainProgram();
    void ShowInstalled();

    // The steps of cmdGoBack_Click, and of the button.
    void OfferWayBack();
    void UpdateWayBack();
    void WithdrawWayBack();
    void GoBackToBackup();
    void ReplaceByBackup(const std::string& version);
    void ShowBack(const std::string& version);
    void RefuseToGoBack(const std::string& reason);

    std::int32_t stagesBegun_ = 0;
    bool stageUnderWay_ = false;
    std::int32_t installPresses_ = 0;
    std::int32_t signatureRequests_ = 0;
    std::int32_t signatureReceived_ = 0;  ///< The last of these requests that was answered.
};

}  // namespace swiftpatch
