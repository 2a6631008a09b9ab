#include "net/wait.h"

#include "runtime/clock.h"
#include "runtime/events.h"

namespace swiftpatch {
namespace {

std::int32_t SecondOfDay() {
    const DateParts now = PartsOf(Now());
    return (now.hour * 60 + now.minute) * 60 + now.second;
}

}  // namespace

void WaitSeconds(std::int16_t seconds) {
    const std::int32_t deadline = SecondOfDay() + seconds;
    while (deadline >= SecondOfDay()) {
        DoEventsResting();
    }
}

}  // namespace swiftpatch
