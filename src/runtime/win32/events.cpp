#include "runtime/events.h"

#include "runtime/runtime_error.h"
#include "runtime/win32/pump.h"

namespace swiftpatch {
namespace {

/// In milliseconds. The longest that anything waits which does not end a rest.
constexpr DWORD kLongestWithoutLook = 50;

/// Between the looks of paced yields, in milliseconds. Where the clock goes on in steps of up to
/// 16, those are the time between.
constexpr DWORD kPace = 4;

bool RestUntilMessage(DWORD milliseconds) {
    return ::MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds, QS_ALLINPUT) !=
           WAIT_TIMEOUT;
}

/// For loops that come back at once. They rest first, because a look that finds nothing costs as
/// much as the rest, and whatever came since the last look ends the rest. What a loop of the
/// system's own looked at and left does not, so there is a look now and then all the same.
void RestAndPump(DWORD milliseconds) {
    ThrowIfOver();
    if (RestUntilMessage(milliseconds) || MillisecondsSinceLook() >= kLongestWithoutLook) {
        Pump();
    }
}

}  // namespace

void DoEvents() { Pump(); }

void DoEventsResting() { RestAndPump(1); }

void DoEventsWaiting() { RestAndPump(kLongestWithoutLook); }

void DoEventsPaced() {
    if (MillisecondsSinceLook() >= kPace) {
        Pump();
    }
}

void End() {
    EndRunAtNextPump();
    throw EndProgram();
}

}  // namespace swiftpatch
