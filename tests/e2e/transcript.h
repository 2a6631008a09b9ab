#pragma once

#include <atomic>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "e2e/controls.h"
#include "e2e/http_server.h"
#include "e2e/wait.h"

namespace swiftpatch::e2e {

/// Watches a program from outside as long as it lives and writes down what a person could see of
/// it: every window, every change of every visible text, each with its time; and every request
/// that the server saw.
class Transcript {
public:
    /// The last text of what can no longer be seen.
    static constexpr char kGone[] = "(gone)";

    Transcript(DWORD process, const HttpServer& server);
    ~Transcript();
    Transcript(const Transcript&) = delete;
    Transcript& operator=(const Transcript&) = delete;

    /// Adds a line of the driver's own.
    void Note(const std::string& text);
    void Stop();
    /// True when a window that is on the screen now has been written down.
    bool HasSeen(HWND window) const;

    /// All lines in the order of their times, each beginning with the seconds since the start.
    std::string Lines() const;
    /// The texts that a control showed, in their order; without a name, those of windows of the
    /// class itself.
    std::vector<std::string> TextsOf(const Control& control) const;
    /// The classes of the windows that were seen, each once, in their order.
    std::vector<std::string> Windows() const;

private:
    struct Event {
        SteadyTime time;
        std::string form;
        std::string control;  ///< Empty: the window itself, or a note.
        std::string text;
    };
    struct Seen {
        std::string form;
        std::string control;
        std::string text;
        bool current = false;  ///< Seen in the present look.
    };

    void Watch();
    void Look();
    void LookAt(HWND window, const std::wstring& form, const std::string& control);
    void DropWhatIsGone();
    void Add(const std::string& form, const std::string& control, const std::string& text);
    std::string Line(SteadyTime time, const std::string& text) const;

    DWORD process_;
    const HttpServer& server_;
    SteadyTime start_;
    mutable std::mutex mutex_;
    std::vector<Event> events_;
    std::map<HWND, Seen> seen_;  ///< The watcher's own.
    std::set<HWND> known_;       ///< The top-level windows in it, for others.
    std::atomic<bool> stopping_{false};
    std::thread watcher_;
};

}  // namespace swiftpatch::e2e
