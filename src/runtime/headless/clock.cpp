#include "runtime/clock.h"

#include "runtime/headless/world.h"

namespace swiftpatch {
namespace {

using headless::TheWorld;

DateTime Seconds(std::int64_t milliseconds) {
    return DateTime(
        std::chrono::floor<std::chrono::seconds>(std::chrono::milliseconds(milliseconds)));
}

}  // namespace

DateTime Now() {
    TheWorld().Advance(TheWorld().clockStep);
    return Seconds(TheWorld().localMilliseconds);
}

DateTime UtcNow() {
    TheWorld().Advance(TheWorld().clockStep);
    return AddMinutes(Seconds(TheWorld().localMilliseconds), -TheWorld().utcOffsetMinutes);
}

std::uint32_t TickCount() { return static_cast<std::uint32_t>(TheWorld().uptime); }

void Sleep(std::uint32_t milliseconds) {
    TheWorld().trace.Add("Sleep " + std::to_string(milliseconds));
    TheWorld().Advance(milliseconds);
}

}  // namespace swiftpatch
