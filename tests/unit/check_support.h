#pragma once

#include <string>
#include <vector>

#include "unit/program_test.h"

namespace swiftpatch {

/// How the trace spells that a property got a text.
std::string Set(const std::string& property, const std::string& text);

/// How the trace spells an answered message box.
std::string Box(const std::string& text, int style = 0, const std::string& answer = "OK",
                const std::string& title = "SwiftPatch");

/// Lines as one text, so that a difference is shown line by line.
std::string Joined(const std::vector<std::string>& lines);

/// What the trace shows of the busy animation's start and of its stop.
std::string AnimationStarted();
std::string AnimationStopped();

/// How the scripted server knows a request.
std::string Head(const std::string& url);
std::string Get(const std::string& url);

/// `reply` without the states on the way to the answer.
headless::Reply Quiet(headless::Reply reply);

/// A server that takes the request and says nothing.
headless::Reply SilentReply();

/// An answer to HEAD with that Content-length.
headless::Reply LengthReply(const std::string& length);

/// What the engine's handler reports about an error.
std::string BrokenTransfer(const std::string& numberAndDescription);

/// A test of a piece of the main window, which is loaded and idle.
class WindowTest : public ProgramTest {
protected:
    /// Shows the main window, puts its first check off and forgets what was observed so far.
    void LoadWindow();

    /// The next failure must be reported with that title and text; the user confirms it.
    void ExpectReport(const std::string& title, const std::string& text);

    /// The steps from the first one that is `first`.
    std::vector<std::string> StepsFrom(const std::string& first) const;

    /// The content of a file in the application folder; a note when there is none.
    std::string Content(const std::string& name);
};

/// A test of the update check on a machine with an installed program of version 3.0.11.0.
class CheckTest : public WindowTest {
protected:
    CheckTest();

    static constexpr const char* kServerDate = "Tue, 10 Mar 2026 10:00:00 GMT";

    /// What the server says about the new build.
    void Offer(std::int32_t size, const std::string& lastModified = kServerDate);
    /// Puts a build into the application folder as downloaded earlier.
    void Stage(const std::string& version, std::size_t size, DateTime changed);
    /// What the check did, from its first step on.
    std::vector<std::string> CheckSteps() const;
    bool Requested(const std::string& request) const;

    const DateTime serverTime = MakeDateTime({2026, 3, 10, 10, 0, 0});
};

}  // namespace swiftpatch
