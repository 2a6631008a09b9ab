#include "runtime/events.h"

#include "runtime/headless/world.h"
#include "runtime/runtime_error.h"

namespace swiftpatch {

using headless::TheWorld;
using headless::World;

void DoEvents() { TheWorld().Pump(World::PumpKind::kAll); }

void DoEventsResting() { TheWorld().Pump(World::PumpKind::kResting); }

void DoEventsWaiting() { TheWorld().Pump(World::PumpKind::kWaiting); }

void DoEventsPaced() { TheWorld().Pump(World::PumpKind::kPaced); }

void End() {
    TheWorld().trace.Add("End");
    TheWorld().EndRun();
    throw EndProgram();
}

bool RunIsOver() { return TheWorld().RunOver(); }

void EndRunAtNextPump() { TheWorld().EndRun(); }

}  // namespace swiftpatch
