#include "demo/demo_run.h"

#include <cstdio>

#include "e2e/main_program.h"
#include "e2e/screenshot.h"
#include "e2e/text.h"
#include "fixtures/animation.h"

namespace swiftpatch::e2e {
namespace {

constexpr char kOldVersion[] = "3.0.11.0";
constexpr char kNewVersion[] = "3.0.12.5";
constexpr char kBackupName[] = "tolvex.3.00.11.00.exe";
constexpr char kServerDate[] = "Wed, 05 Feb 2020 08:12:00 GMT";

// The build on offer is made larger, and the server sends it slowly enough to look on.
constexpr std::uint64_t kPadding = 4 * 1024 * 1024;
constexpr std::uint64_t kDownloadSeconds = 8;
constexpr std::size_t kLicenceSize = 6000;

// A person reads and thinks.
constexpr milliseconds kLongestWait{10 * 60 * 1000};
constexpr milliseconds kLongestWaitAlone{90000};
constexpr milliseconds kSoon{40000};

Reply Publication(std::string bytes) {
    Reply reply;
    reply.body = Body(std::move(bytes));
    reply.lastModified = kServerDate;
    return reply;
}

void Require(bool condition, const std::string& what) {
    if (!condition) {
        throw DriveError(what);
    }
}

}  // namespace

DemoRun::DemoRun(const Options& options)
    : options_(options),
      oldBuild_(SampleProgram(options, kOldVersion)),
      newBuild_(SampleProgram(options, kNewVersion) + Body::Pattern(kPadding).Read(0, kPadding)),
      folder_(options.scratch / "app", options.updater) {}

void DemoRun::Run() {
    PrepareFolder();
    PublishNewBuild();
    updater_.emplace(folder_.Updater());
    transcript_.emplace(updater_->Running().Id(), server_);
    std::string failure;
    try {
        Play();
    } catch (const DriveError& error) {
        failure = error.what();
    }
    transcript_->Stop();
    WriteWholeFile(options_.scratch / "transcript.txt", transcript_->Lines());
    Require(failure.empty(), failure);
}

void DemoRun::Play() {
    WatchSplash();
    WatchCheck();
    WatchDownload();
    Install();
    Leave();
    CheckResult();
}

void DemoRun::PrepareFolder() {
    folder_.Keep();
    folder_.Write("tolvex.exe", oldBuild_);
    folder_.Write("filecopy.avi", fixtures::MakeAnimation());
    folder_.Write(kOrdersName, kOrdersToRecord);
    folder_.WriteSettings("http://" + server_.Host() + "/download/");
}

void DemoRun::PublishNewBuild() {
    Reply build = Publication(newBuild_);
    build.bytesPerSecond = newBuild_.size() / kDownloadSeconds;
    server_.On("/download/tolvex30.exe", build);
    server_.On("/download/filecopy.avi", Publication(fixtures::MakeAnimation()));
    server_.On("/download/LICENSE.TXT", Publication(std::string(kLicenceSize, '\n')));
}

void DemoRun::WatchSplash() {
    Say("The splash window");
    updater_->AwaitWindow(kSplash, kSoon);
    AwaitShown(kSplashLoading, "Preferences OK");
    Picture(kSplash, "splash.png");
}

void DemoRun::WatchCheck() {
    updater_->AwaitWindow(kMain, kSoon);
    Say("The check for an update");
    AwaitShown(kLblAnimationMsg, "checking connection to q-tolvex servers...");
    Picture(kMain, "checking.png");
    Confirm("that there is no downloaded build yet");
}

void DemoRun::WatchDownload() {
    constexpr int kMiddle = 40;
    Say("The download of " + std::to_string(newBuild_.size()) + " bytes");
    const auto reached = [this] {
        const std::string text = updater_->Text(kLblStatus);
        return text.find(" % download") != std::string::npos && std::stoi(text) >= kMiddle;
    };
    Await("the middle of the download", reached, LongestWait());
    Picture(kMain, "downloading.png");
    AwaitShown(kLblStatus, "Click on Install Button.");
    Picture(kMain, "ready.png");
}

void DemoRun::Install() {
    Say("The install");
    if (options_.automatic) {
        updater_->Press(kCmdInstall);
    }
    Confirm("that a backup is made");
    AwaitShown(kLblAnimationMsg, "You have installed the latest version of q-tolvex.");
    updater_->AwaitEnabled(kCmdClose, kSoon);
    Picture(kMain, "installed.png");
}

void DemoRun::Leave() {
    Say("Close, and the start of the new main program");
    if (options_.automatic) {
        updater_->Press(kCmdClose);
    }
    updater_->AwaitEnd(LongestWait());
    const MainProgram started(folder_.Path(), kSoon);
    Await(
        "the new main program's window", [&] { return started.Window() != nullptr; }, kSoon);
    started.Close();
}

void DemoRun::CheckResult() const {
    Require(folder_.Read("tolvex.exe") == newBuild_, "tolvex.exe is not the published build");
    Require(folder_.Read(kBackupName) == oldBuild_, "the backup is not the old build");
    const std::vector<std::string> record = RecordIn(folder_.Path());
    Require(!record.empty() && BeginsWith(record.front(), std::string("started ") + kNewVersion),
            "the new main program was not started");
}

milliseconds DemoRun::LongestWait() const {
    return options_.automatic ? kLongestWaitAlone : kLongestWait;
}

void DemoRun::AwaitShown(const Control& control, const std::string& text) const {
    const auto shown = [&] {
        const std::vector<std::string> texts = transcript_->TextsOf(control);
        return (!texts.empty() && texts.back() == text) || !updater_->Running().Running();
    };
    const bool there = WaitUntil(shown, LongestWait()) && updater_->Running().Running();
    Require(there, std::string(control.name) + " never showed \"" + OneLine(text) + "\"; " +
                       updater_->Describe());
}

void DemoRun::Confirm(const std::string& what) {
    const Box box = updater_->AwaitMessageBox(LongestWait());
    Say("  The box that says " + what);
    if (options_.automatic) {
        Await(
            "the box in the transcript", [&] { return transcript_->HasSeen(box.window); }, kSoon);
        updater_->Answer(box, IDOK);
    }
}

void DemoRun::Picture(const wchar_t* form, const std::string& name) {
    SaveScreenshot(updater_->Window(form), options_.scratch / name);
    transcript_->Note("picture " + name);
}

void DemoRun::Say(const std::string& text) {
    std::printf("demo: %s\n", text.c_str());
    std::fflush(stdout);
}

}  // namespace swiftpatch::e2e
