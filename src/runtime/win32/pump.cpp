#include "runtime/win32/pump.h"

#include <algorithm>
#include <cassert>
#include <exception>
#include <utility>
#include <vector>

#include "runtime/events.h"
#include "runtime/runtime_error.h"
#include "runtime/win32/keyboard.h"

namespace swiftpatch {
namespace {

/// For this long a pump goes on with messages that came after it began, so that a flood of them
/// cannot keep it for ever.
constexpr DWORD kLongestFlood = 20;

/// In milliseconds: so long may a message wait that no rest tells of.
constexpr DWORD kLongestWithoutLook = 50;

/// Between the looks of paced yields, in milliseconds. The clock's steps of up to 16 make it
/// longer.
constexpr DWORD kPace = 4;

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

void MarkOver() {
    State().over = true;
    // Leaves the loops of the system as well: message boxes, menus, the moving of a window.
    ::PostQuitMessage(0);
}

void Handle(MSG& message) {
    if (message.message == WM_QUIT) {
        MarkOver();
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

/// The one pump. Returns whether anything was waiting.
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

bool RestUntilMessage(DWORD milliseconds) {
    return ::MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds, QS_ALLINPUT) !=
           WAIT_TIMEOUT;
}

/// For loops that come back at once. They rest first, because a look that finds nothing costs as
/// much as the rest, and whatever came since the last look ends the rest. What a loop of the
/// system's own looked at and left does not, so there is a look now and then all the same.
void RestAndPump(DWORD milliseconds) {
    ThrowIfOver();
    if (RestUntilMessage(milliseconds) ||
        ::GetTickCount() - State().lookedAt >= kLongestWithoutLook) {
        Pump();
    }
}

}  // namespace

void PumpWaiting() {
    if (!Pump()) {
        RestUntilMessage(INFINITE);
        Pump();
    }
}

LRESULT Guarded(const std::function<LRESULT()>& procedure) noexcept {
    try {
        return procedure();
    } catch (const EndProgram&) {
        MarkOver();
    } catch (...) {
        if (!State().stored) {
            State().stored = std::current_exception();
        }
        MarkOver();
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

void DoEvents() { Pump(); }

void DoEventsResting() { RestAndPump(1); }

void DoEventsWaiting() { RestAndPump(kLongestWithoutLook); }

void DoEventsPaced() {
    if (::GetTickCount() - State().lookedAt >= kPace) {
        Pump();
    }
}

void End() {
    MarkOver();
    throw EndProgram();
}

bool RunIsOver() { return State().over; }

void EndRunAtNextPump() { MarkOver(); }

}  // namespace swiftpatch
