#include "runtime/console/run_program.h"

#include "runtime/app.h"
#include "runtime/console/attendance.h"
#include "runtime/events.h"
#include "runtime/internal/outermost_loop.h"
#include "runtime/program.h"
#include "runtime/runtime_error.h"
#include "runtime/win32/pump.h"
#include "runtime/win32/system_library.h"

// The outermost loop. A timer elapses here as soon as nothing else is to do, whatever its interval:
// those are for the eyes of a person, such as the seconds that the splash is shown for. Where there
// is no timer either, the interactive program waits for its person; here the attendant is asked.
//
// A timer of the system's ticks besides, in every pump, for the attendant's look at the clock. It
// belongs to the thread, not to a window.

namespace swiftpatch {
namespace {

constexpr UINT kLookInterval = 1000;  // Milliseconds.

void CALLBACK OnLook(HWND /*window*/, UINT /*message*/, UINT_PTR /*timer*/, DWORD /*time*/) {
    Guarded([] {
        TheAttendant().Look();
        return LRESULT{0};
    });
}

/// False when there was nothing to be done.
bool GoOn() {
    if (Timer* const timer = RunningTimer()) {
        RaiseEvent([timer] { timer->RaiseElapsed(); });
        return true;
    }
    bool done = false;
    RaiseEvent([&done] { done = TheAttendant().Rest(); });
    return done;
}

void RunToTheEnd() {
    RaiseEvent(Main);
    while (AnyFormLoaded()) {
        if (!Pump() && !GoOn()) {
            ::WaitMessage();
        }
        DeleteForms();
    }
}

/// For what no procedure traps because no program code raises it.
void ReportLast(const RuntimeError& error) {
    TheAttendant().Answer(
        {kMessageBox, App::Title(), UntrappedErrorText(error), msgbox::kCritical});
}

void StartUp() {
    KeepToSystemLibraries();
    // Neither a missing disk nor a crash is asked about in a box of the system's.
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    App::PrevInstance();  // Looked up now, and so recorded for the instances to come.
}

}  // namespace

void RunProgram(Attendant& attendant) {
    SetAttendant(attendant);
    StartUp();
    const bool ole = SUCCEEDED(::OleInitialize(nullptr));
    ::SetTimer(nullptr, 0, kLookInterval, OnLook);
    RunOutermost(RunToTheEnd, ReportLast);
    if (ole) {
        ::OleUninitialize();
    }
}

}  // namespace swiftpatch
