#include "screenshots/gallery.h"

#include <thread>

#include "e2e/main_program.h"
#include "e2e/screenshot.h"
#include "e2e/text.h"
#include "fixtures/animation.h"
#include "support/minisign_signer.h"

namespace swiftpatch::e2e {
namespace {

constexpr char kOldVersion[] = "3.0.11.0";
constexpr char kNewVersion[] = "3.0.12.5";
constexpr char kServerDate[] = "Wed, 05 Feb 2020 08:12:00 GMT";
// Later than the server's build, so that a staged one counts as fresh.
constexpr UtcTime kStagedTime{std::chrono::seconds(1580976720)};
constexpr char kBuildTarget[] = "/upd/tolvex30.exe";
constexpr char kSignatureTarget[] = "/upd/tolvex30.exe.minisig";
constexpr std::uint64_t kDownloadSeconds = 12;

constexpr char kLogName[] = "tolvex.log";
constexpr char kLogText[] =
    "2026-03-09 17:42:10  The drawing \"Valve 7\" could not be saved: disk full\r\n"
    "2026-03-09 17:42:31  Saved as a copy in the folder of temporary files\r\n"
    "2026-03-10 08:05:02  The copy was found and opened\r\n";

// Nobody is in a hurry, and the machine may be busy.
constexpr milliseconds kSoon{120000};
// The windows paint themselves a moment after they have changed.
constexpr milliseconds kPaintingTime{700};

}  // namespace

Gallery::Gallery(const Options& options) : options_(options) {}

void Gallery::Make() {
    PassThroughAnUpdate();
    PassThroughACheckThatFindsNothing();
    PassThroughAFailure();
    PassThroughABrokenDownload();
    PassThroughBuildsThatAreNotSigned();
    PassThroughAWayBack();
}

void Gallery::MakeSplash(const std::string& name) {
    folder_.emplace(options_.scratch / "app", options_.updater);
    updater_.emplace(folder_->Updater());
    updater_->AwaitText(kSplashLoading, "Preferences OK", kSoon);
    Picture(kSplash, name);
}

void Gallery::PassThroughAnUpdate() {
    Reply build;
    build.body = Body(SampleProgram(options_, kNewVersion));
    build.bytesPerSecond = build.body.Size() / kDownloadSeconds;
    Publish(build);
    Start(kOldVersion, "");
    updater_->AwaitText(kSplashLoading, "Preferences OK", kSoon);
    Picture(kSplash, "splash");
    updater_->AwaitText(kLblAnimationMsg, "checking connection to q-tolvex servers...", kSoon);
    Picture(kMain, "checking");
    PictureOfBox("box-no-earlier-download", IDOK);
    WatchDownload();
    updater_->AwaitText(kLblStatus, "Click on Install Button.", kSoon);
    Picture(kMain, "ready");
    updater_->Press(kCmdInstall);
    PictureOfBox("box-backup", IDOK);
    updater_->AwaitText(kLblAnimationMsg, "You have installed the latest version of q-tolvex.",
                        kSoon);
    Picture(kMain, "installed");
    CloseQuietly();
}

void Gallery::WatchDownload() {
    constexpr int kWellUnderWay = 30;
    const auto underWay = [this] {
        const std::string text = updater_->Text(kLblStatus);
        return text.find(" % download") != std::string::npos && std::stoi(text) >= kWellUnderWay;
    };
    Await("the download", underWay, kSoon);
    Picture(kMain, "downloading");
    updater_->CloseByCorner(kMain);
    PictureOfBox("box-confirm-exit", IDNO);
}

void Gallery::PassThroughACheckThatFindsNothing() {
    Reply build;
    build.body = Body(SampleProgram(options_, kNewVersion));
    Publish(build);
    const AppFolder elsewhere(options_.scratch / "elsewhere", options_.updater);
    elsewhere.Write("tolvex.exe", SampleProgram(options_, kOldVersion));
    // cppcheck-suppress unreadVariable ; that it runs is what is wanted.
    const MainProgram running(elsewhere.File("tolvex.exe"), L"--refuse");
    Start(kNewVersion, kNewVersion);
    PictureOfBox("box-program-running", IDNO);
    updater_->AwaitEnabled(kCmdClose, kSoon);
    Picture(kMain, "up-to-date");
    CloseQuietly();
}

void Gallery::PassThroughAFailure() {
    Reply missing = NotFound();
    server_.On(kBuildTarget, missing);
    server_.On("/upd/LICENSE.TXT", missing);
    Start(kOldVersion, "");
    updater_->AwaitWindow(kFailure, kSoon);
    Picture(kFailure, "no-connection");
    updater_->Press(kFailureExit);
    updater_->AwaitEnabled(kCmdReadLog, kSoon);
    updater_->AwaitEnabled(kCmdClose, kSoon);
    Picture(kMain, "failed");
    updater_->Press(kCmdReadLog);
    updater_->AwaitWindow(kLog, kSoon);
    Picture(kLog, "error-log");
    updater_->Press(kCmdMain);
    updater_->AwaitWindow(kMain, kSoon);
    CloseQuietly();
}

void Gallery::PassThroughABrokenDownload() {
    Reply broken;
    broken.body = Body(SampleProgram(options_, kNewVersion));
    broken.end = BodyEnd::kReset;
    broken.endAfter = broken.body.Size() / 2;
    Publish(broken);
    Start(kOldVersion, "");
    AnswerBox(IDOK);
    updater_->AwaitWindow(kFailure, kSoon);
    Picture(kFailure, "timed-out");
    updater_->Press(kFailureExit);
    updater_->AwaitEnabled(kCmdRetry, kSoon);
    updater_->AwaitEnabled(kCmdClose, kSoon);
    Picture(kMain, "retry-offered");
    CloseQuietly();
}

void Gallery::PassThroughBuildsThatAreNotSigned() {
    const std::string build = SampleProgram(options_, kNewVersion);
    const std::string keys = "SigningKeys=" + MinisignSigner("maker").PublicKeyText() + "\r\n";
    Reply reply;
    reply.body = Body(build);
    Publish(reply);
    server_.On(kSignatureTarget, NotFound());
    PictureOfRefusal("signature-missing", keys);
    PublishSignature("another build");
    PictureOfRefusal("signature-invalid", keys);
    PictureOfRefusal("signing-key-invalid", "SigningKeys=\r\n");
    PublishSignature(build);
    Start(kOldVersion, kNewVersion, keys);
    updater_->AwaitText(kLblStatus, "Click on Install Button.", kSoon);
    folder_->Write("tolvex30.exe", "another build");
    updater_->Press(kCmdInstall);
    PictureOfBox("box-not-signed", IDOK);
    updater_->AwaitEnabled(kCmdClose, kSoon);
    CloseQuietly();
}

void Gallery::PassThroughAWayBack() {
    Reply build;
    build.body = Body(SampleProgram(options_, kNewVersion));
    Publish(build);
    Start(kNewVersion, kNewVersion, "OfferBackups=1\r\n", kOldVersion);
    updater_->AwaitEnabled(kCmdGoBack, kSoon);
    Picture(kMain, "way-back-offered");
    updater_->Press(kCmdGoBack);
    PictureOfBox("box-go-back", IDYES);
    updater_->AwaitText(kLblAnimationMsg, "You are back at version 3.00.11.00.", kSoon);
    Picture(kMain, "back");
    CloseQuietly();
    updater_.emplace(folder_->Updater());
    updater_->AwaitText(kLblStatus, "Click on Install Button.", kSoon);
    Picture(kMain, "gone-back-from");
    CloseQuietly();
}

void Gallery::PictureOfRefusal(const std::string& name, const std::string& settings) {
    Start(kOldVersion, "", settings);
    AnswerBox(IDOK);
    updater_->AwaitWindow(kFailure, kSoon);
    Picture(kFailure, name);
    updater_->Press(kFailureExit);
    updater_->AwaitEnabled(kCmdClose, kSoon);
    CloseQuietly();
}

void Gallery::PublishSignature(const std::string& build) {
    Reply reply;
    reply.body = Body(
        MinisignSigner("maker").SignBuild(HashOfBuild(build), TrustedCommentFor("tolvex30.exe")));
    server_.On(kSignatureTarget, reply);
}

void Gallery::Start(const std::string& installed, const std::string& staged,
                    const std::string& moreSettings, const std::string& kept) {
    updater_.reset();
    folder_.reset();
    folder_.emplace(options_.scratch / "app", options_.updater);
    folder_->WriteSettings("http://" + server_.Host() + "/upd/",
                           std::string("LogFileName=") + kLogName + "\r\n" + moreSettings);
    folder_->Write(kLogName, kLogText);
    folder_->Write("filecopy.avi", fixtures::MakeAnimation());
    folder_->Write("tolvex.exe", SampleProgram(options_, installed));
    if (!staged.empty()) {
        folder_->Write("tolvex30.exe", SampleProgram(options_, staged));
        folder_->SetTime("tolvex30.exe", kStagedTime);
    }
    if (!kept.empty()) {
        folder_->Write("tolvex.3.00.11.00.exe", SampleProgram(options_, kept));
    }
    updater_.emplace(folder_->Updater());
}

void Gallery::Publish(const Reply& build) {
    constexpr std::size_t kLicenceSize = 6000;
    Reply dated = build;
    dated.lastModified = kServerDate;
    server_.On(kBuildTarget, dated);
    Reply licence;
    licence.body = Body(std::string(kLicenceSize, '\n'));
    server_.On("/upd/LICENSE.TXT", licence);
}

void Gallery::Picture(const wchar_t* form, const std::string& name) {
    std::this_thread::sleep_for(kPaintingTime);
    SaveScreenshot(updater_->AwaitWindow(form, kSoon), options_.scratch / (name + ".png"));
}

void Gallery::PictureOfBox(const std::string& name, int button) {
    updater_->AwaitMessageBox(kSoon);
    Picture(kMessageBoxClass, name);
    AnswerBox(button);
}

void Gallery::AnswerBox(int button) { updater_->Answer(updater_->AwaitMessageBox(kSoon), button); }

void Gallery::CloseQuietly() {
    if (updater_->Checked(kChkRunTolvex)) {
        updater_->Press(kChkRunTolvex);
        Await(
            "the empty check box", [this] { return !updater_->Checked(kChkRunTolvex); }, kSoon);
    }
    updater_->Press(kCmdClose);
    updater_->AwaitEnd(kSoon);
}

}  // namespace swiftpatch::e2e
