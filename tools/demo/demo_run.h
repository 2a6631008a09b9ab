#pragma once

#include <optional>
#include <string>

#include "e2e/app_folder.h"
#include "e2e/http_server.h"
#include "e2e/options.h"
#include "e2e/transcript.h"
#include "e2e/updater.h"

namespace swiftpatch::e2e {

/// The whole update, from the splash window to the start of the new main program, against a server
/// of its own. The buttons are pressed by it, or by the person who looks on.
class DemoRun {
public:
    explicit DemoRun(const Options& options);

    /// Throws DriveError as soon as something does not go as it should. The transcript is written
    /// in any case.
    void Run();

private:
    void Play();
    void PrepareFolder();
    void PublishNewBuild();
    void WatchSplash();
    void WatchCheck();
    void WatchDownload();
    void Install();
    void Leave();
    void CheckResult() const;

    milliseconds LongestWait() const;
    /// Waits for a text, for as long as a person may take.
    void AwaitShown(const Control& control, const std::string& text) const;
    /// Presses OK where nobody else does.
    void Confirm(const std::string& what);
    void Picture(const wchar_t* form, const std::string& name);
    void Say(const std::string& text);

    const Options& options_;
    std::string oldBuild_;
    std::string newBuild_;
    HttpServer server_;
    AppFolder folder_;
    std::optional<Updater> updater_;
    std::optional<Transcript> transcript_;
};

}  // namespace swiftpatch::e2e
