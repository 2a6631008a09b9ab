#pragma once

#include <functional>

#include "runtime/win32/win32.h"

namespace swiftpatch {

/// The one pump: handles what is waiting, and says whether anything was. Goes on with messages that
/// come meanwhile for a moment only. Throws as DoEvents does.
bool Pump();

/// Since the last pump began.
DWORD MillisecondsSinceLook();

/// Handles what is waiting; where nothing is, first rests until something comes, however long that
/// takes. Throws as DoEvents does.
void PumpWaiting();

/// Runs `procedure` at a boundary that no exception may cross (a window procedure, a callback of
/// the system): what leaves it ends the run and is thrown again by the next pump.
LRESULT Guarded(const std::function<LRESULT()>& procedure) noexcept;

/// Throws what a boundary stored, or EndProgram once the run is over.
void ThrowIfOver();

/// Takes a pending end out of the queue, so that one last box can be shown.
void ForgetQuit();

/// Destroys a window, but not before the message that is being handled has left its procedure.
void DestroyLater(HWND window);
void DestroyAllNow();

}  // namespace swiftpatch
