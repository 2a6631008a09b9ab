#include "runtime/win32/run_program.h"

#include "runtime/app.h"
#include "runtime/events.h"
#include "runtime/form.h"
#include "runtime/internal/outermost_loop.h"
#include "runtime/program.h"
#include "runtime/runtime_error.h"
#include "runtime/win32/peer.h"
#include "runtime/win32/pump.h"
#include "runtime/win32/system_library.h"

namespace swiftpatch {
namespace {

void RunToTheEnd() {
    RaiseEvent(Main);
    while (!LoadedForms().empty()) {
        PumpWaiting();
        DeleteForms();
    }
}

/// For what no procedure traps because no program code raises it.
void ShowLastBox(const RuntimeError& error) {
    ForgetQuit();
    ::MessageBoxA(OwnerForBox(), UntrappedErrorText(error).c_str(), App::Title().c_str(),
                  MB_ICONERROR | MB_SETFOREGROUND);
}

void RegisterControls() {
    const SystemLibrary library("comctl32.dll");
    const LateFunction<decltype(&::InitCommonControlsEx)> initialize(library,
                                                                     "InitCommonControlsEx");
    const INITCOMMONCONTROLSEX controls{
        sizeof(controls), ICC_PROGRESS_CLASS | ICC_ANIMATE_CLASS | ICC_LISTVIEW_CLASSES};
    initialize(&controls);
}

void StartUp() {
    KeepToSystemLibraries();
    // Missing disks are reported as errors, not asked for by the system.
    ::SetErrorMode(SEM_FAILCRITICALERRORS);
    App::PrevInstance();  // Looked up now, and so recorded for the instances to come.
    RegisterControls();
}

}  // namespace

int RunProgram() {
    StartUp();
    const bool ole = SUCCEEDED(::OleInitialize(nullptr));
    RunOutermost(RunToTheEnd, ShowLastBox);
    DestroyAllNow();
    if (ole) {
        ::OleUninitialize();
    }
    return 0;
}

}  // namespace swiftpatch
