#include "runtime/win32/taskbar.h"

#include "runtime/form.h"

// Needs the system's other headers before it, and is too large for those who do not use it.
#include <shobjidl.h>

namespace swiftpatch {
namespace {

ITaskbarList3* FindTaskbar() {
    void* found = nullptr;
    ::CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList3, &found);
    auto* const taskbar = static_cast<ITaskbarList3*>(found);
    return taskbar != nullptr && SUCCEEDED(taskbar->HrInit()) ? taskbar : nullptr;
}

/// Null before Windows 7. Looked for only once: it stays in use to the end of the run.
ITaskbarList3* Taskbar() {
    static ITaskbarList3* const taskbar = FindTaskbar();
    return taskbar;
}

TBPFLAG StateOf(std::int32_t progress) {
    if (progress >= 0) {
        return TBPF_NORMAL;
    }
    return progress == taskbar::kFailure ? TBPF_ERROR : TBPF_NOPROGRESS;
}

}  // namespace

void ShowOnTaskbar(HWND window, std::int32_t progress) {
    constexpr ULONGLONG kWhole = 100;
    if (Taskbar() == nullptr) {
        return;
    }
    const TBPFLAG state = StateOf(progress);
    if (state != TBPF_NOPROGRESS) {
        // A failure fills the button, so that it is seen however little had come in.
        const auto done = progress >= 0 ? static_cast<ULONGLONG>(progress) : kWhole;
        Taskbar()->SetProgressValue(window, done, kWhole);
    }
    Taskbar()->SetProgressState(window, state);
}

}  // namespace swiftpatch
