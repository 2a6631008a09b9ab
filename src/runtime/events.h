#pragma once

#include <functional>

namespace swiftpatch {

// The four yields pump messages: timers, clicks and notifications of transfers run inside them. A
// yield that pumps throws EndProgram once the run is over.

/// Handles all messages that are waiting and returns at once.
void DoEvents();

/// For loops that only wait: as DoEvents, but when nothing is waiting it first rests for at most
/// one millisecond until something comes, so that waiting costs no processor time.
void DoEventsResting();

/// For waits that only a message ends: as DoEvents, but when nothing is waiting it first rests
/// until something comes. (It returns after fifty milliseconds all the same.)
void DoEventsWaiting();

/// For loops that yield thousands of times a second: as DoEvents, every 4 to 16 milliseconds; in
/// between it returns without a look at the queue.
void DoEventsPaced();

/// Ends the run at once: no further event procedure runs, no box stays.
[[noreturn]] void End();

/// True once the run has ended; what runs after that is only clean-up.
bool RunIsOver();

/// Ends the run without leaving the caller: the next pump throws EndProgram.
void EndRunAtNextPump();

/// While one lives, no timer ticks and no transfer reports, whoever pumps: for a question whose
/// answer decides whether anything goes on. What a transfer has to report comes afterwards, in its
/// order, and the time does not count towards its time-out.
class EventsHeld {
public:
    EventsHeld();
    ~EventsHeld();
    EventsHeld(const EventsHeld&) = delete;
    EventsHeld& operator=(const EventsHeld&) = delete;
};
bool EventsAreHeld();

/// Calls an event procedure for the platform. An error that leaves the procedure was trapped by
/// nobody: the system's box shows it and the run ends, whatever procedure was pumping messages.
/// Throws nothing but EndProgram.
void RaiseEvent(const std::function<void()>& procedure);

}  // namespace swiftpatch
