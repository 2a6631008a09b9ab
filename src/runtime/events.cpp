#include "runtime/events.h"

#include "runtime/msgbox.h"
#include "runtime/runtime_error.h"

namespace swiftpatch {
namespace {

int& Holders() {
    static int holders = 0;
    return holders;
}

}  // namespace

EventsHeld::EventsHeld() { ++Holders(); }

EventsHeld::~EventsHeld() { --Holders(); }

bool EventsAreHeld() { return Holders() > 0; }

void RaiseEvent(const std::function<void()>& procedure) {
    try {
        procedure();
    } catch (const RuntimeError& error) {
        MsgBox(UntrappedErrorText(error), msgbox::kCritical);
        End();
    }
}

}  // namespace swiftpatch
