#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "runtime/controls.h"
#include "runtime/datetime.h"
#include "runtime/form.h"
#include "runtime/headless/disk.h"
#include "runtime/headless/network.h"
#include "runtime/headless/trace.h"
#include "runtime/headless/user.h"
#include "runtime/os_version.h"

namespace swiftpatch::headless {

/// A window of the scripted desktop.
struct DesktopWindow {
    WindowHandle handle = 0;
    std::string className;
    std::string title;
    WindowHandle parent = 0;  ///< The window it is a part of, or the owner of a top-level window.
    bool child = false;       ///< A part of its parent: not among the top-level windows.
    /// What the window answers to a message; 0 without one.
    std::function<std::int32_t(std::uint32_t message)> answer;
};

/// What the machine says about itself.
struct Machine {
    std::string applicationFolder = "C:\\Tolvex";
    int major = 1;
    int minor = 2;
    int revision = 2;
    bool prevInstance = false;
    std::string windowsDirectory = "C:\\WINDOWS";
    std::string systemDirectory = "C:\\WINDOWS\\SYSTEM32";
    PixelSize screen{1024, 768};
    bool highContrast = false;
    bool hasSse2 = true;  ///< The one ability of a processor that the program asks for.
    bool connected = true;
    std::uint32_t connectionFlags = 0x12;
    std::int32_t connectionError = 0;  ///< Raised by the look at the connection when not 0.
    std::int32_t topMostResult = 1;
    OsVersionRecord version;
    std::uint32_t largestVersionRecord = 156;     ///< Larger records are refused.
    bool versionReadFails = false;                ///< GetFileVersionInfoA
    bool versionQueryFails = false;               ///< VerQueryValueA
    std::map<std::string, std::string> settings;  ///< "application\\section\\key" -> text
};

/// The whole scripted machine that a native test runs the program on: clock, disk, server, user,
/// desktop. One exists at a time; the headless runtime finds it through TheWorld().
class World {
public:
    World();
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    Trace trace;
    Disk disk{trace};
    Network network{trace};
    User user{trace};
    Machine machine;
    std::vector<DesktopWindow> desktop;  ///< From the top down.

    // What can be observed too, but is no step of the trace.
    std::string focus;                  ///< The control that got the keyboard last.
    std::vector<std::int32_t> taskbar;  ///< What the button on the task bar has shown.

    /// The version in a file that is no sample build, "3.0.12.5" or nothing; when set.
    std::function<std::string(const std::string& bytes)> versionIn;
    /// Runs when a copy has been made and before it is looked at, when set.
    std::function<void(File& copy)> withEachCopy;
    /// Runs inside each reading of an INI file, when set.
    std::function<void()> whileReadingProfile;
    /// Runs at the start of each yield, when set; whatever it does happens inside that yield.
    std::function<void()> inEachYield;

    /// Milliseconds since 1970 on the local clock, and how far that clock is from UTC.
    std::int64_t localMilliseconds = 0;
    int utcOffsetMinutes = 0;
    /// Milliseconds of the clock that is never set.
    std::int64_t uptime = 0;
    /// Every look at a clock moves it by this many milliseconds.
    int clockStep = 0;
    /// How long a yield rests when nothing is waiting.
    int restStep = 1;

    void SetLocalTime(DateTime time);
    void Advance(std::int64_t milliseconds);
    /// Lets the time pass until a hold ends at a moment of the uptime, as far as holds are waited
    /// for. False when it did not end.
    bool WaitOutHold(std::int64_t until);

    /// A path in the application folder, and a file put there.
    std::string PathOf(const std::string& name) const;
    File& AddFile(const std::string& name, const std::string& bytes, DateTime changed = {});

    /// Runs `action` inside the `nth` pump from now on.
    void AtPump(int nth, std::function<void()> action);
    /// Runs `action` inside the first pump after this many milliseconds.
    void After(std::int64_t milliseconds, std::function<void()> action);
    /// Runs `action` inside the first pump at which `condition` holds.
    void When(std::function<bool()> condition, std::function<void()> action);

    /// What the outermost loop does: runs `procedure` as the platform runs an event procedure, and
    /// swallows EndProgram. Inside a pump EndProgram is passed on.
    void Dispatch(const std::function<void()>& procedure);
    /// Pumps for this many milliseconds, or until the run is over.
    void PumpFor(std::int64_t milliseconds);
    /// How many event procedures and yields are on the stack.
    int Depth() const { return depth_; }

    /// What a person does. A click on something that a person could not reach does nothing.
    void Click(const Form& form, CommandButton& button);
    void Close(Form& form);

    // Used by the headless runtime.
    enum class PumpKind { kAll, kResting, kWaiting, kPaced };
    void Pump(PumpKind kind);
    void EndRun();
    bool RunOver() const { return runOver_; }
    void TimerChanged(Timer& timer);
    void ForgetTimer(const Timer& timer);
    std::vector<std::function<void()>> clocked;  ///< Called four times a second.
    WindowHandle nextHandle = 0x10010;
    std::int64_t pumps = 0;

private:
    struct Armed {
        Timer* timer;
        std::int64_t due;
    };
    struct Scripted {
        std::function<bool()> condition;
        std::function<void()> action;
    };

    bool RunScripts();
    bool FireTimer();
    void PumpOnce(bool resting);

    std::vector<Armed> timers_;
    std::vector<Scripted> scripts_;
    std::int64_t lastClocked_ = 0;
    int depth_ = 0;
    bool runOver_ = false;
};

World& TheWorld();

}  // namespace swiftpatch::headless
