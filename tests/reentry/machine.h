#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "runtime/headless/world.h"

namespace swiftpatch::reentry {

/// What the person at the screen does in a run besides answering boxes and dialogs: each once, as
/// soon as it can be done.
enum class Deed { kInstall, kRetry, kReadLog, kGoBack, kCloseByCorner, kEndSession };

/// One kind of run: the machine it happens on and what the person does.
struct Scenario {
    std::string name;
    std::function<void(headless::World&)> prepare;
    std::set<Deed> deeds;
    bool fromSplash = false;  ///< Begins with the splash window instead of the main window.
};

/// Something that happens to the program from outside.
struct Event {
    std::string name;
    std::function<void(headless::World&)> happen;
    /// The disk fails: that may be told in boxes of any kind, and files may be missing afterwards.
    bool diskFault = false;
};

/// What happens in which yield of a run, counted from 1.
using Intrusions = std::map<std::int64_t, const Event*>;

/// What came out of a run.
struct Outcome {
    std::vector<std::string> problems;  ///< What must not be; empty for a good run.
    bool asked = false;                 ///< A box asked yes or no.
    /// What the program was doing in each yield, as far as the machine shows it; filled on demand.
    std::vector<std::string> yields;
};

/// Every box that asks yes or no is answered with `answer`.
Outcome Play(const Scenario& scenario, MsgBoxAnswer answer, const Intrusions& intrusions,
             bool withYields = false);

/// Installed before the old one.
extern const std::string kEarlierBuild;
extern const std::string kOldBuild;
extern const std::string kNewBuild;
/// Nobody has signed it, and it is as long as the new one.
extern const std::string kForgedBuild;

std::vector<Scenario> AllScenarios();
/// The same run on a machine on which the way back is offered.
Scenario WithWayBack(Scenario scenario);
std::vector<Event> AllEvents();
/// A press that begins the way back.
std::vector<Event> PressOfGoBack();
/// What can happen to the disk.
std::vector<Event> AllDiskFaults();

}  // namespace swiftpatch::reentry
