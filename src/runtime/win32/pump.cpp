#include "runtime/win32/pump.h"

#include <algorithm>
#include <cassert>
#include <exception>
#include <utility>
#include <vector>

#include "runtime/events.h"
#include "runtime/runtime_error.h"
#include "runtime/win32/keyboard.h"

// Everything that happens, happens inside Pump: it takes messages from the thread's queue until
// none is left, and whatever they set off runs here, on the one thread that there is. It nests: an
// event procedure that waits pumps again.
//
// So a window must not go while a message to it is still on the stack: it is only marked, and goes
// when the pump that took that message has handled it. An exception must not cross the system's
// code, which lies between a pump and the procedures that it calls: Guarded stores it there, and
// the pump throws it again. And the end of the run has to get past every loop on the stack:
// EndProgram leaves ours, WM_QUIT leaves the system's (message boxes, menus), and a pump that takes
// WM_QUIT posts it again for those below.
//
// The state lives as long as the process. The usual loop around GetMessage will not do: it returns
// only when the program ends, and here whoever pumps has work to go on with.

namespace swiftpatch {
namespace {

/// For this long a pump goes on with messages that came after it began, so that a flood of them
/// cannot keep it for ever.
constexpr DWORD kLongestFlood = 20;

struct DoomedWindow {
    HWND window;
    int depth;  ///< Of the pumps, when it was doomed.
};

struct PumpState {
    const DWORD thread = ::GetCurrentThreadId();
    int depth = 0;
    DWORD lookedAt = 0;  ///< When the last pump began, in ticks.
    bool over = false;
    std::exception_ptr stored;
    std::vector<DoomedWindow> doomed;
};

/// Never destroyed: windows go after it otherwise, when the program's statics do.
PumpState& State() {
    static auto& state = *new PumpState;
    return state;
}

/// Counts the pumps on the stack.
class Pumping {
public:
    Pumping() { ++State().depth; }
    ~Pumping() { --State().depth; }
    Pumping(const Pumping&) = delete;
    Pumping& operator=(const Pumping&) = delete;
};

/// Destroys the windows that were doomed inside a message of this pump or of a deeper one.
void DestroyDoomed(int depth) {
    auto& doomed = State().doomed;
    const auto ripe =
        std::stable_partition(doomed.begin(), doomed.end(),
                              [depth](const DoomedWindow& each) { return each.depth < depth; });
    const std::vector<DoomedWindow> going(ripe, doomed.end());
    doomed.erase(ripe, doomed.end());
    for (const DoomedWindow& each : going) {
        ::DestroyWindow(each.window);
    }
}

void Handle(MSG& message) {
    if (message.message == WM_QUIT) {
        EndRunAtNextPump();
    } else if (!HandleKey(message)) {
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
    DestroyDoomed(State().depth);
    ThrowIfOver();
}

bool CameAfter(const MSG& message, DWORD start) {
    return static_cast<LONG>(message.time - start) > 0;
}

}  // namespace

bool Pump() {
    assert(::GetCurrentThreadId() == State().thread);
    const Pumping pumping;
    ThrowIfOver();
    const DWORD start = ::GetTickCount();
    State().lookedAt = start;
    bool any = false;
    MSG message;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        any = true;
        Handle(message);
        if (CameAfter(message, start) && ::GetTickCount() - start > kLongestFlood) {
            break;
        }
    }
    DestroyDoomed(State().depth);  // Messages that others send are handled inside the look.
    ThrowIfOver();
    return any;
}

DWORD MillisecondsSinceLook() { return ::GetTickCount() - State().lookedAt; }

void PumpWaiting() {
    if (!Pump()) {
        ::WaitMessage();
        Pump();
    }
}

LRESULT Guarded(const std::function<LRESULT()>& procedure) noexcept {
    try {
        return procedure();
    } catch (const EndProgram&) {
        EndRunAtNextPump();
    } catch (...) {
        if (!State().stored) {
            State().stored = std::current_exception();
        }
        EndRunAtNextPump();
    }
    return 0;
}

void ThrowIfOver() {
    if (State().stored) {
        std::rethrow_exception(std::exchange(State().stored, nullptr));
    }
    if (State().over) {
        throw EndProgram();
    }
}

void ForgetQuit() {
    MSG message;
    while (::PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
}

void DestroyLater(HWND window) { State().doomed.push_back({window, State().depth}); }

void DestroyAllNow() { DestroyDoomed(0); }

bool RunIsOver() { return State().over; }

void EndRunAtNextPump() {
    State().over = true;
    // Leaves the loops of the system as well: message boxes, menus, the moving of a window.
    ::PostQuitMessage(0);
}

}  // namespace swiftpatch
