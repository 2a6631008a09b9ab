#include "reentry/life.h"

#include <algorithm>

#include "install/frmRunning.h"
#include "install/running_program.h"
#include "runtime/events.h"
#include "runtime/program.h"
#include "shared/shared_state.h"

namespace swiftpatch::reentry {

namespace {

/// Coarse enough for short runs: every rest and every look at the clock lasts so long.
constexpr int kStep = 100;  // Milliseconds.

/// The longest run of all takes a tenth of each.
constexpr std::int64_t kLongestRun = 10 * 60 * 1000;  // Milliseconds.
constexpr std::int64_t kMostYields = 40000;

/// How long the person looks at a box, a dialog or the log.
constexpr int kYieldsBeforeAnswer = 2;

/// A caption without its numbers, so that the same stage always reads the same.
std::string WithoutNumbers(const std::string& text) {
    std::string rest;
    std::copy_if(text.begin(), text.end(), std::back_inserter(rest),
                 [](char letter) { return letter < '0' || letter > '9'; });
    return rest;
}

/// True for a box that tells of an error of the program itself.
bool IsInnerError(const std::string& text) {
    // The viewer reads the log under the number 1, which a download may have: then it says so and
    // the main window stays. Deliberate.
    if (text.starts_with("Error Number: 55") && text.ends_with("cmdReadLog_Click()")) {
        return false;
    }
    return text.starts_with("Run-time error") || text.starts_with("Error Number:") ||
           text.starts_with("Internet Error:");
}

}  // namespace

Life::Life(const Scenario& scenario, MsgBoxAnswer answer, const Intrusions& intrusions,
           bool withYields)
    : scenario_(scenario),
      answer_(answer),
      intrusions_(intrusions),
      withYields_(withYields),
      deedsLeft_(scenario.deeds) {
    shared = {};
    shared.ServerDownloadPath = "tolvex.example/files/";
    shared.LogFileName = "error.log";
    WindowHandles.clear();
    world_.clockStep = kStep;
    world_.restStep = kStep;
    scenario_.prepare(world_);
    const std::string settings = world_.disk.Find(world_.PathOf("tolvex.dta.txt"))->bytes;
    shared.InstallAtOnce = settings.find("InstallAtOnce=1") != std::string::npos;
    shared.OfferBackups = settings.find("OfferBackups=1") != std::string::npos;
    world_.inEachYield = [this] { InEachYield(); };
    world_.user.onAnyBox = [this](const auto& text, int style, const auto& /*title*/) {
        return AnswerBox(text, style);
    };
    world_.user.onAnyDialog = [this](Form& form) { AnswerDialog(form); };
}

Life::~Life() {
    frmLog::Instance.Release();
    frmSwiftPatch::Instance.Release();
    frmSplash1::Instance.Release();
    DeleteForms();
}

void Life::Start() {
    world_.Dispatch([this] {
        if (scenario_.fromSplash) {
            Main();
        } else {
            Window().Show();
        }
    });
}

void Life::InEachYield() {
    ++yields_;
    if (yields_ > kMostYields) {
        Problem("it does not come to an end");
        world_.EndRun();
        throw EndProgram();
    }
    if (withYields_) {
        outcome_.yields.push_back(Doing());
    }
    if (const auto due = intrusions_.find(yields_); due != intrusions_.end()) {
        diskFault_ |= due->second->diskFault;
        due->second->happen(world_);
    }
}

/// Two yields with the same description are yields of the same stage.
std::string Life::Doing() const {
    std::string text = std::to_string(world_.network.Requests().size()) + " boxes " +
                       std::to_string(world_.user.OpenBoxes()) +
                       (world_.user.TopDialog() != nullptr ? " dialog" : "") + " depth " +
                       std::to_string(world_.Depth()) + (SplashShown() ? " splash" : "") +
                       (ViewerShown() ? " viewer" : "");
    if (!WindowThere()) {
        return text;
    }
    const frmSwiftPatch& window = Window();
    const auto flag = [&text](const char* name, bool set) { text += set ? name : ""; };
    flag(" main", window.Visible());
    flag(" transfer", window.Inet1.StillExecuting());
    flag(" probe", window.headerProbe);
    flag(" close", window.cmdClose.Enabled);
    flag(" install", window.cmdInstall.Visible && window.cmdInstall.Enabled);
    flag(" retry", window.cmdRetry.Visible);
    flag(" back", window.cmdGoBack.Visible && window.cmdGoBack.Enabled);
    flag(" check", window.tmrCheckVersion.Enabled);
    return text + " mode " + std::to_string(static_cast<int>(window.downloadMode)) + " \"" +
           headless::Quoted(WithoutNumbers(window.lblStatus.Caption)) + " " +
           headless::Quoted(window.lblAnimationMsg.Caption.Get());
}

MsgBoxAnswer Life::AnswerBox(const std::string& text, int style) {
    if (IsInnerError(text) && !diskFault_) {
        Problem("a box of an inner error: " + text);
    }
    for (int i = 0; i < kYieldsBeforeAnswer; ++i) {
        DoEventsResting();
    }
    const bool yesNo = (style & 15) == msgbox::kYesNo;
    outcome_.asked |= yesNo;
    return yesNo ? answer_ : MsgBoxAnswer::kOk;
}

void Life::AnswerDialog(Form& form) {
    auto& dialog = dynamic_cast<frmRunning&>(form);
    // That transfer's file stays open, deliberately.
    fileLeftOpenDeliberately_ |= dialog.code == "Error Downloading File";
    for (int i = 0; i < kYieldsBeforeAnswer && form.Visible(); ++i) {
        DoEventsResting();
    }
    const int boxesBelow = world_.user.OpenBoxes();
    while (form.Visible()) {
        const bool onTop =
            world_.user.TopDialog() == &form && world_.user.OpenBoxes() == boxesBelow;
        if (onTop) {
            dialog.cmdExit.RaiseClick();
        } else {
            DoEventsResting();
        }
    }
}

/// The system's loop ends as well when the last window has gone.
bool Life::Over() const {
    return world_.RunOver() || (!SplashShown() && !WindowThere() && !ViewerShown());
}

bool Life::WorkUnderWay() const {
    if (SplashShown()) {
        return true;
    }
    return WindowThere() && (Window().Inet1.StillExecuting() || Window().tmrCheckVersion.Enabled);
}

bool Life::Do(Deed deed) {
    frmSwiftPatch& window = Window();
    const auto press = [this, &window](CommandButton& button) {
        const bool there = window.Visible() && button.Visible && button.Enabled;
        if (there) {
            world_.Click(window, button);
        }
        return there;
    };
    switch (deed) {
        case Deed::kInstall:
            return press(window.cmdInstall);
        case Deed::kRetry:
            return press(window.cmdRetry);
        case Deed::kReadLog:
            return press(window.cmdReadLog);
        case Deed::kGoBack:
            return press(window.cmdGoBack);
        default:
            return false;
    }
}

bool Life::ActAsPlanned() {
    for (const Deed deed : std::set<Deed>(deedsLeft_)) {
        if (WindowThere() && Do(deed)) {
            deedsLeft_.erase(deed);
            return true;
        }
    }
    return false;
}

void Life::LeaveViewer() {
    for (int i = 0; i < kYieldsBeforeAnswer; ++i) {
        world_.PumpFor(kStep);
    }
    if (!Over() && ViewerShown()) {
        world_.Click(frmLog::Instance.Get(), frmLog::Instance.Get().cmdMain);
    }
}

void Life::UntilQuiet() {
    bool acted = true;
    while (!Over() && world_.uptime < kLongestRun && (acted || WorkUnderWay())) {
        world_.PumpFor(kStep);
        acted = !Over() && ActAsPlanned();
        if (!Over() && ViewerShown()) {
            LeaveViewer();
            acted = true;
        }
        if (!Over() && !acted && !WorkUnderWay()) {
            // So that events also come while nothing happens at all; one can begin the work anew.
            world_.PumpFor(3 * kStep);
        }
    }
}

void Life::LeaveAmidDownload(Deed deed, const std::function<void()>& leave) {
    const auto downloading = [] {
        return WindowThere() && Window().Inet1.StillExecuting() &&
               Window().downloadMode == DownloadMode::kBuild;
    };
    if (deedsLeft_.erase(deed) > 0) {
        world_.When(downloading, [leave] { RaiseEvent(leave); });
    }
}

Outcome Life::Live() {
    LeaveAmidDownload(Deed::kCloseByCorner, [] { Window().Unload(); });
    LeaveAmidDownload(Deed::kEndSession, [] {
        if (Window().QueryUnload()) {
            Window().UnloadUnasked();
        }
    });
    Start();
    UntilQuiet();
    if (!Over()) {
        CheckQuietState();
        EndByClose();
    }
    CheckNothingRanAfterTheEnd();
    CheckFiles();
    CheckRequests();
    return std::move(outcome_);
}

Outcome Play(const Scenario& scenario, MsgBoxAnswer answer, const Intrusions& intrusions,
             bool withYields) {
    return Life(scenario, answer, intrusions, withYields).Live();
}

}  // namespace swiftpatch::reentry
