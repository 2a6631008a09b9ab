#include "runtime/events.h"

#include "app/frmSplash1.h"
#include "install/frmLog.h"
#include "install/frmRunning.h"
#include "mainwindow/frmSwiftPatch.h"
#include "reentry/machine.h"
#include "runtime/files.h"
#include "runtime/runtime_error.h"
#include "shared/shared_state.h"

namespace swiftpatch::reentry {

using headless::World;

namespace {

frmSwiftPatch& Window() { return frmSwiftPatch::Instance.Get(); }

bool WindowThere() {
    return frmSwiftPatch::Instance.Exists() && frmSwiftPatch::Instance.Get().Loaded();
}

Event Click(const char* name, CommandButton frmSwiftPatch::*button) {
    return {std::string("click ") + name, [button](World& world) {
                if (WindowThere()) {
                    world.Click(Window(), Window().*button);
                }
            }};
}

/// The system's notification, which comes whether or not a box is open; it is dropped while the
/// runtime holds events back.
Event Tick(const char* name, Timer frmSwiftPatch::*timer) {
    return {std::string("tick ") + name, [timer](World&) {
                if (WindowThere() && !EventsAreHeld()) {
                    RaiseEvent([timer] { (Window().*timer).RaiseElapsed(); });
                }
            }};
}

/// WM_CLOSE, which other programs send whether or not a box is open.
template <class F>
Event CloseWindow(const char* name) {
    return {std::string("WM_CLOSE ") + name, [](World&) {
                if (F::Instance.Exists() && F::Instance.Get().Loaded()) {
                    RaiseEvent([] { F::Instance.Get().Unload(); });
                }
            }};
}

void PressDialogsButton(World& world) {
    if (auto* dialog = dynamic_cast<frmRunning*>(world.user.TopDialog())) {
        world.Click(*dialog, dialog->cmdExit);
    }
}

void CloseDialog(World& world) {
    if (Form* dialog = world.user.TopDialog(); dialog != nullptr && dialog->Loaded()) {
        RaiseEvent([dialog] { dialog->Unload(); });
    }
}

void PressMain(World& world) {
    if (frmLog::Instance.Exists()) {
        world.Click(frmLog::Instance.Get(), frmLog::Instance.Get().cmdMain);
    }
}

void OpenAndCloseViewer(World& world) {
    if (WindowThere()) {
        world.Click(Window(), Window().cmdReadLog);
        PressMain(world);
    }
}

void PressSplashExit(World& world) {
    if (frmSplash1::Instance.Exists()) {
        world.Click(frmSplash1::Instance.Get(), frmSplash1::Instance.Get().cmdExit);
    }
}

void TickSplash(World&) {
    if (frmSplash1::Instance.Exists() && !EventsAreHeld()) {
        RaiseEvent([] { frmSplash1::Instance.Get().tmrUnload.RaiseElapsed(); });
    }
}

void PressCheckBox(World& world) {
    if (WindowThere() && Window().Visible() && world.user.CanReach(Window())) {
        RaiseEvent([] { Window().chkRunTolvex.RaisePressed(); });
    }
}

void AskForTheSession(World&) {
    if (WindowThere()) {
        RaiseEvent([] { Window().QueryUnload(); });
    }
}

/// What the system sends each window in turn: all are asked, and all go when all agree.
void EndTheSession(World&) {
    RaiseEvent([] {
        const bool splash = frmSplash1::Instance.Exists() && frmSplash1::Instance.Get().Loaded();
        if (splash && !frmSplash1::Instance.Get().QueryUnload()) {
            return;
        }
        if (WindowThere() && !Window().QueryUnload()) {
            return;
        }
        if (splash && frmSplash1::Instance.Exists()) {
            frmSplash1::Instance.Get().UnloadUnasked();
        }
        if (WindowThere()) {
            Window().UnloadUnasked();
        }
    });
}

void EndTheSessionUnasked(World&) {
    if (WindowThere()) {
        RaiseEvent([] { Window().UnloadUnasked(); });
    }
}

void DeliverAll(World& world) {
    while (!EventsAreHeld() && world.network.DeliverOne()) {
    }
}

Event Report(int state) {
    return {"transfer state " + std::to_string(state), [state](World& world) {
                if (!EventsAreHeld()) {
                    world.network.Report(state);
                }
            }};
}

/// The transfer control reports state 11 while it waits for an answer; within a body the error is
/// raised to whoever reads it.
Event Break(const char* how, std::int32_t errorNumber) {
    return {std::string("transfer ") + how, [errorNumber](World& world) {
                if (!EventsAreHeld()) {
                    world.network.Break(errorNumber);
                }
            }};
}

Event MoveClock(const char* how, std::int64_t days) {
    return {std::string("clock a day ") + how,
            [days](World& world) { world.localMilliseconds += days * 24 * 60 * 60 * 1000; }};
}

/// Another process puts its own build in the place of the one that is staged. What this program has
/// open for writing nobody else can change.
void ExchangeBuild(World& world) {
    if (shared.SigningKeys && FreeFile() == 1) {
        world.disk.ChangeFromOutside(world.PathOf("tolvex30.exe"), kForgedBuild);
    }
}

void Hold(World& world, const std::string& name) {
    if (headless::File* file = world.disk.Find(world.PathOf(name))) {
        file->held = true;
    }
}

void FillDisk(World& world) {
    for (const char* operation : {"Put", "FileCopy", "Close"}) {
        for (int nth = 1; nth <= 3; ++nth) {
            world.disk.Fail(operation, error_number::kDiskFull, nth);
        }
    }
}

void MakeUnreadable(World& world) {
    for (const char* operation : {"Lock", "Read"}) {
        for (int nth = 1; nth <= 3; ++nth) {
            world.disk.Fail(operation, error_number::kDeviceIoError, nth);
        }
    }
}

void RemoveFolder(World& world) {
    world.disk.folders.clear();
    for (const std::string& path : world.disk.Names()) {
        world.disk.Remove(path);
    }
}

void ForbidWriting(World& world) {
    for (const std::string& path : world.disk.Names()) {
        world.disk.Find(path)->readOnly = true;
    }
    world.disk.folders.clear();
}

}  // namespace

std::vector<Event> AllDiskFaults() {
    const auto held = [](const char* name) {
        return Event{std::string("held: ") + name, [name](World& world) { Hold(world, name); },
                     true};
    };
    return {
        held("tolvex.exe"),
        held("tolvex30.exe"),
        held("filecopy.avi"),
        held("tolvex.3.00.10.00.exe"),
        {"disk full", FillDisk, true},
        {"disk unreadable", MakeUnreadable, true},
        {"folder removed", RemoveFolder, true},
        {"folder read-only", ForbidWriting, true},
    };
}

std::vector<Event> PressOfGoBack() { return {Click("cmdGoBack", &frmSwiftPatch::cmdGoBack)}; }

std::vector<Event> AllEvents() {
    std::vector<Event> events = {
        Click("cmdGoBack", &frmSwiftPatch::cmdGoBack),
        Click("cmdInstall", &frmSwiftPatch::cmdInstall),
        Click("cmdRetry", &frmSwiftPatch::cmdRetry),
        Click("cmdReadLog", &frmSwiftPatch::cmdReadLog),
        Click("cmdClose", &frmSwiftPatch::cmdClose),
        Tick("tmrCheckVersion", &frmSwiftPatch::tmrCheckVersion),
        Tick("tmrDownloadTimeout", &frmSwiftPatch::tmrDownloadTimeout),
        CloseWindow<frmSwiftPatch>("frmSwiftPatch"),
        CloseWindow<frmSplash1>("frmSplash1"),
        CloseWindow<frmLog>("frmLog"),
        {"WM_CLOSE frmRunning", CloseDialog},
        {"click frmRunning.cmdExit", PressDialogsButton},
        {"click frmLog.cmdMain", PressMain},
        {"open and close the log viewer", OpenAndCloseViewer},
        {"click frmSplash1.cmdExit", PressSplashExit},
        {"tick tmrUnload", TickSplash},
        {"press chkRunTolvex", PressCheckBox},
        {"WM_QUERYENDSESSION", AskForTheSession},
        {"session end", EndTheSession},
        {"session end unasked", EndTheSessionUnasked},
        {"whole answer", DeliverAll},
        Break("timed out", error_number::kRequestTimedOut),
        Break("lost", error_number::kRequestFailed),
        MoveClock("forward", 1),
        MoveClock("back", -1),
        {"build exchanged", ExchangeBuild},
    };
    // The states on the way to an answer; 11 and 12 come with the failures and the answer above.
    for (int state = 1; state <= 10; ++state) {
        events.push_back(Report(state));
    }
    return events;
}

}  // namespace swiftpatch::reentry
