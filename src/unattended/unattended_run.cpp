#include "unattended/unattended_run.h"

#include <array>

#include "install/go_back.h"
#include "install/modVersion.h"
#include "mainwindow/frmSwiftPatch.h"
#include "runtime/clock.h"
#include "runtime/desktop.h"
#include "runtime/events.h"
#include "runtime/files.h"
#include "runtime/runtime_error.h"
#include "shared/paths.h"
#include "shared/shared_state.h"

namespace swiftpatch {
namespace {

// Milliseconds.
constexpr std::uint32_t kSilence = 3000;
/// A server can keep a transfer alive with a byte now and then, for ever. On the slowest line of
/// all a hundredth of a large build takes less than this.
constexpr std::uint32_t kLongestStandstill = 10 * 60 * 1000;

/// A label and what its text is called in the lines.
struct ShownLabel {
    const Label* label;
    const char* name;
};

/// The window, once it is there.
frmSwiftPatch* Window() {
    return frmSwiftPatch::Instance.Exists() ? &frmSwiftPatch::Instance.Get() : nullptr;
}

bool OffersInstall(const frmSwiftPatch& window) {
    return window.cmdInstall.Visible && window.cmdInstall.Enabled;
}

bool IsWindowThere(WindowHandle window) {
    std::string name(2, '\0');
    return window != 0 && GetClassNameA(window, name) != 0;
}

}  // namespace

UnattendedRun::UnattendedRun(const CommandLine& line, Reporter& reporter)
    : line_(line),
      reporter_(reporter),
      before_(StateOf(AppFile(kMainProgram))),
      lastProgress_(TickCount()),
      lastLine_(lastProgress_) {}

UnattendedRun::FileState UnattendedRun::StateOf(const std::string& path) {
    try {
        return {{FileLen(path), FileDateTime(path).time_since_epoch().count()}};
    } catch (const RuntimeError&) {
        return {};
    }
}

void UnattendedRun::Loads(const Form& form) {
    // The settings have been read by now; those of this run come before the data file's.
    if (form.Name() == "frmSwiftPatch") {
        shared.InstallAtOnce = shared.InstallAtOnce && !line_.check;
        shared.OfferBackups = shared.OfferBackups || line_.goBack;
    }
}

void UnattendedRun::Saw(const Component& component, PropertyId id) {
    frmSwiftPatch* const window = Window();
    if (window == nullptr) {
        return;
    }
    if (&component == &window->tmrCheckVersion && line_.goBack) {
        window->tmrCheckVersion.Enabled = false;
    }
    const bool text = id == PropertyId::kCaption || id == PropertyId::kVisible;
    const std::array labels{
        ShownLabel{&window->lblVersion, "version"},
        ShownLabel{&window->lblAnimationMsg, "message"},
        ShownLabel{&window->lblStatus, "status"},
        ShownLabel{&window->lblTolvexVersion, "offer"},
    };
    for (const auto& [label, name] : labels) {
        if (&component == label && text && label->Visible) {
            SawText(name, label->Caption);
        }
    }
    if (&component == window && id == PropertyId::kCaption) {
        SawText("title", window->Caption);
    } else if (&component == &window->txtDebug) {
        SawText("report", window->txtDebug.Text);
    } else if (&component == &window->ProgressBar1 && id == PropertyId::kValue) {
        const std::int32_t percent = window->ProgressBar1.Value;
        if (percent > percent_) {
            reporter_.Progress(percent);
            Progressed();
        }
        percent_ = percent;
    }
}

void UnattendedRun::SawText(const std::string& part, const std::string& text) {
    if (reporter_.Step(part, text)) {
        Progressed();
    }
}

void UnattendedRun::Progressed() {
    lastProgress_ = TickCount();
    lastLine_ = lastProgress_;
}

MsgBoxAnswer UnattendedRun::Answer(const Question& question) {
    const Judgement judgement = Judge(question);
    const MsgBoxAnswer answer = AnswerTo(question, judgement);
    reporter_.Asked(question, NameOf(answer), judgement.meaning != Meaning::kUnknown);
    Progressed();
    return answer;
}

MsgBoxAnswer UnattendedRun::AnswerTo(const Question& question, const Judgement& judgement) {
    switch (judgement.meaning) {
        case Meaning::kExit:
            return MsgBoxAnswer::kYes;
        case Meaning::kWantsToGoBack:
            goingBack_ = line_.goBack;
            return goingBack_ ? MsgBoxAnswer::kYes : MsgBoxAnswer::kNo;
        case Meaning::kWantsToClose:
            closing_ = ProgramMayBeClosed();
            return closing_ ? MsgBoxAnswer::kYes : MsgBoxAnswer::kNo;
        case Meaning::kStillRunning:
            ending_.failure =
                closing_ ? ExitStatus::kProgramNotClosed : ExitStatus::kProgramRunning;
            closing_ = false;
            return SafeAnswer(question);
        case Meaning::kFailure:
            Fail(judgement);
            return SafeAnswer(question);
        default:
            return SafeAnswer(question);
    }
}

/// A missing animation is never a reason to miss an update: the run goes on after it.
void UnattendedRun::Fail(const Judgement& judgement) {
    const frmSwiftPatch* const window = Window();
    if (window != nullptr && window->downloadMode == DownloadMode::kAnimation) {
        return;
    }
    // The program said that it would close, and yet holds its file.
    const bool open = judgement.status == ExitStatus::kDisk && closing_ && IsWindowThere(told_);
    ending_.failure = open ? ExitStatus::kProgramNotClosed : judgement.status;
    if (judgement.status == ExitStatus::kNoConnection && window != nullptr &&
        window->Inet1.Fault() != TransferFault::kNone &&
        window->Inet1.Fault() != TransferFault::kProxyLogon) {
        ending_.failure = ExitStatus::kBadServer;  // It is there, and its certificate is bad.
    }
}

bool UnattendedRun::Rest() {
    frmSwiftPatch* const window = Window();
    if (window == nullptr || window->Inet1.StillExecuting()) {
        return false;
    }
    if (line_.goBack && !pressed_) {
        GoBack(*window);
    } else if (!line_.check && !pressed_ && OffersUpdate(*window)) {
        pressed_ = true;
        window->cmdInstall.RaiseClick();
    } else {
        Leave(*window);
    }
    return true;
}

bool UnattendedRun::OffersUpdate(const frmSwiftPatch& window) {
    return OffersInstall(window) &&
           !WasGoneBackFrom(modVersion::ReadFileVersion(AppFile(kStagedBuild)).ProductVersion);
}

void UnattendedRun::GoBack(frmSwiftPatch& window) {
    pressed_ = true;
    window.cmdClose.Enabled = true;  // Nothing has begun that could be unfinished.
    const std::string before = InstalledProductVersion();
    if (before.empty()) {
        ending_.failure = ExitStatus::kDisk;
        return;
    }
    window.cmdGoBack.Click();
    const std::string now = InstalledProductVersion();
    ending_.programReplaced = !now.empty() && now != before;
}

void UnattendedRun::Leave(frmSwiftPatch& window) {
    if (window.downloadMode == DownloadMode::kBuild) {
        ending_.failedRequest = window.Inet1.ResponseCode();
    }
    const bool offered = OffersUpdate(window);
    ending_.updateReady = line_.check && offered;
    ending_.finished = window.cmdClose.Enabled && !offered;
    if (!window.cmdClose.Enabled && !ending_.failure) {
        ending_.failure =
            ExitStatus::kBadServer;  // It has sent a build that says nothing of itself.
    }
    if (!closing_) {
        window.chkRunTolvex.Value = CheckState::kUnchecked;
    }
    window.Unload();
    if (window.Loaded()) {
        EndRunAtNextPump();
    }
}

void UnattendedRun::Look() {
    const std::uint32_t now = TickCount();
    if (now - lastProgress_ > kLongestStandstill) {
        ending_.failure = ExitStatus::kTimedOut;
        EndRunAtNextPump();
    } else if (now - lastLine_ >= kSilence) {
        reporter_.Waiting((now - lastProgress_) / 1000);
        lastLine_ = now;
    }
}

/// Only where there is something to put in its place: a run that finds nothing new leaves the
/// program alone.
bool UnattendedRun::ProgramMayBeClosed() const {
    const frmSwiftPatch* const window = Window();
    return line_.closeProgram && window != nullptr && (OffersInstall(*window) || goingBack_);
}

bool UnattendedRun::MaySend(WindowHandle window) {
    if (!ProgramMayBeClosed()) {
        return false;
    }
    reporter_.Note("Telling " SWIFTPATCH_RUNNING_NAME " to close...");
    Progressed();
    told_ = window;
    return true;
}

void UnattendedRun::Sent(WindowHandle /*window*/, bool answered) {
    if (!answered) {
        reporter_.Note(SWIFTPATCH_RUNNING_NAME " does not answer.");
        Progressed();
    }
}

bool UnattendedRun::MayDelete(const std::string& path) {
    if (line_.check) {
        gone_.insert(path);
    }
    return !line_.check;
}

bool UnattendedRun::IsThere(const std::string& path, bool found) {
    if (!line_.check) {
        return found;
    }
    // A missing animation would be fetched.
    return path == AppFile(kBusyAnimation) || (found && gone_.count(path) == 0);
}

bool UnattendedRun::MayRequest(const std::string& url, const std::string& verb) {
    if (url.empty()) {
        return true;
    }
    if (line_.check && verb == "GET" && url == shared.ServerDownloadPath + kStagedBuild) {
        ending_.updateReady = true;
        return false;
    }
    reporter_.Request(verb, url);
    Progressed();
    return true;
}

ExitStatus UnattendedRun::Status() {
    ending_.otherUpdater = App::PrevInstance();
    // A copy has the time of what it was made from.
    const FileState now = StateOf(AppFile(kMainProgram));
    const bool installed = now && now != before_ && now == StateOf(AppFile(kStagedBuild));
    ending_.programReplaced = ending_.programReplaced || installed;
    return StatusOf(ending_);
}

}  // namespace swiftpatch
