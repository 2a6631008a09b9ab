#include "runtime/headless/world.h"

#include <algorithm>

#include "runtime/events.h"
#include "runtime/files.h"
#include "runtime/headless/nested.h"
#include "runtime/internal/unfinished_copy.h"
#include "runtime/runtime_error.h"

namespace swiftpatch::headless {
namespace {

World* theWorld = nullptr;

constexpr std::int64_t kClockPeriod = 250;  // Milliseconds.

}  // namespace

World& TheWorld() { return *theWorld; }

World::World() {
    theWorld = this;
    disk.folders.insert(machine.applicationFolder);
    SetLocalTime(MakeDateTime({2026, 3, 10, 12, 0, 0}));
}

World::~World() {
    DeleteForms();
    CloseAllFiles();
    theWorld = nullptr;
}

void World::SetLocalTime(DateTime time) {
    localMilliseconds = std::int64_t{time.time_since_epoch().count()} * 1000;
}

void World::Advance(std::int64_t milliseconds) {
    localMilliseconds += milliseconds;
    uptime += milliseconds;
}

bool World::WaitOutHold(std::int64_t until) {
    Advance(std::clamp<std::int64_t>(until - uptime, 0, kLongestHold));
    return until <= uptime;
}

std::string World::PathOf(const std::string& name) const {
    return machine.applicationFolder + "\\" + name;
}

File& World::AddFile(const std::string& name, const std::string& bytes, DateTime changed) {
    return disk.Add(PathOf(name), {bytes, changed});
}

void World::AtPump(int nth, std::function<void()> action) {
    When([this, due = pumps + nth] { return pumps >= due; }, std::move(action));
}

void World::After(std::int64_t milliseconds, std::function<void()> action) {
    When([this, due = uptime + milliseconds] { return uptime >= due; }, std::move(action));
}

void World::When(std::function<bool()> condition, std::function<void()> action) {
    scripts_.push_back({std::move(condition), std::move(action)});
}

void World::Dispatch(const std::function<void()>& procedure) {
    if (depth_ > 0) {
        RaiseEvent(procedure);
        return;
    }
    if (runOver_) {
        return;
    }
    try {
        const Nested dispatching(depth_);
        RaiseEvent(procedure);
    } catch (const EndProgram&) {
        runOver_ = true;
    }
    DeleteForms();
}

void World::PumpFor(std::int64_t milliseconds) {
    const std::int64_t end = uptime + milliseconds;
    while (!runOver_ && uptime < end) {
        Dispatch([this] { PumpOnce(true); });
    }
}

void World::Click(const Form& form, CommandButton& button) {
    if (form.Visible() && user.CanReach(form)) {
        Dispatch([&button] { button.RaiseClick(); });
    }
}

void World::Close(Form& form) {
    Dispatch([&form] { form.Unload(); });
}

void World::Pump(PumpKind kind) {
    constexpr const char* kNames[] = {"DoEvents", "DoEventsResting", "DoEventsWaiting",
                                      "DoEventsPaced"};
    trace.Add(kNames[static_cast<int>(kind)]);
    PumpOnce(kind == PumpKind::kResting || kind == PumpKind::kWaiting);
}

void World::PumpOnce(bool resting) {
    if (runOver_) {
        throw EndProgram();
    }
    ++pumps;
    const Nested pumping(depth_);
    if (inEachYield) {
        inEachYield();
    }
    const bool handled =
        RunScripts() || (!EventsAreHeld() && (network.DeliverOne() || FireTimer()));
    if (resting && !handled) {
        Advance(restStep);
    }
    if (uptime >= lastClocked_ + kClockPeriod) {
        lastClocked_ = uptime;
        for (std::size_t i = 0; i < clocked.size(); ++i) {
            clocked[i]();
        }
    }
    if (runOver_) {
        throw EndProgram();
    }
}

void World::EndRun() { runOver_ = true; }

bool World::RunScripts() {
    const auto due = std::find_if(scripts_.begin(), scripts_.end(),
                                  [](const Scripted& script) { return script.condition(); });
    if (due == scripts_.end()) {
        return false;
    }
    const std::function<void()> action = std::move(due->action);
    scripts_.erase(due);
    action();
    return true;
}

bool World::FireTimer() {
    const auto due = std::find_if(timers_.begin(), timers_.end(),
                                  [this](const Armed& armed) { return armed.due <= uptime; });
    if (due == timers_.end()) {
        return false;
    }
    due->due = uptime + due->timer->Interval;
    Timer& timer = *due->timer;
    RaiseEvent([&timer] { timer.RaiseElapsed(); });
    return true;
}

void World::TimerChanged(Timer& timer) {
    ForgetTimer(timer);
    if (timer.Enabled && timer.Interval > 0) {
        timers_.push_back({&timer, uptime + timer.Interval});
    }
}

void World::ForgetTimer(const Timer& timer) {
    std::erase_if(timers_, [&timer](const Armed& armed) { return armed.timer == &timer; });
}

}  // namespace swiftpatch::headless
