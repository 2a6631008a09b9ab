#include "e2e/update_run.h"

#include <algorithm>
#include <array>
#include <iostream>

#include "e2e/options.h"
#include "e2e/text.h"
#include "fixtures/animation.h"
#include "support/minisign_signer.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kLongestStart{40000};
constexpr milliseconds kLongestStage{40000};
constexpr milliseconds kLongestReaction{10000};
// The licence text counts as a sign of life of the server from 4000 bytes on.
constexpr std::size_t kLicenceSize = 5000;
// The animation comes in slowly on purpose, so that a short one is published.
constexpr int kAnimationFrames = 2;

Reply Plain(std::string bytes) {
    Reply reply;
    reply.body = Body(std::move(bytes));
    return reply;
}

std::string CorruptFileText(const std::string& path) {
    return "No version information available for\r\n'" + path +
           "'\r\n\r\nThe file is probably corrupt.\r\n\r\nDeleting '" + path + "'";
}

std::string MissingFileText(const std::string& path) {
    return "No version information available for\r\n'" + path +
           "'\r\n\r\nThe file does not exist.\r\n\r\nDownloading '" + path + "'";
}

bool SpelledByCodePage(const std::wstring& text) {
    BOOL lost = FALSE;
    WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), static_cast<int>(text.size()),
                        nullptr, 0, nullptr, &lost);
    return lost == FALSE;
}

std::wstring ShortName(const std::wstring& path) {
    std::array<wchar_t, MAX_PATH> name{};
    GetShortPathNameW(path.c_str(), name.data(), static_cast<DWORD>(name.size()));
    return name.data();
}

}  // namespace

UpdateRun::UpdateRun() { UseFolder(L"app"); }

void UpdateRun::TearDown() {
    if (updater_ && updater_->Running().Running()) {
        ADD_FAILURE() << "the updater is still running; " << updater_->Describe();
    }
    if (transcript_) {
        transcript_->Stop();
        if (HasFailure()) {
            std::cout << "What happened:\n" << transcript_->Lines();
        }
    }
    updater_.reset();
    EndStartedMainProgram();
}

// A failed test can leave the main program that the updater started, which would hold its file.
void UpdateRun::EndStartedMainProgram() const {
    if (!folder_) {
        return;
    }
    for (const DWORD id : ProcessesOf(folder_->File("tolvex.exe"))) {
        try {
            const Process left(id);
        } catch (const DriveError&) {
            continue;  // It has ended by itself.
        }
    }
}

void UpdateRun::UseFolder(const std::wstring& name) {
    folder_.reset();
    folder_ = std::make_unique<AppFolder>(TestOptions().scratch / name, TestOptions().updater);
    folder_->WriteSettings(ServerFolder());
    folder_->Write("filecopy.avi", fixtures::MakeAnimation(kAnimationFrames));
}

std::string UpdateRun::Build(const std::string& version) const {
    return SampleProgram(TestOptions(), version);
}

Reply UpdateRun::BuildReply(const std::string& version) const {
    Reply reply = Plain(Build(version));
    reply.lastModified = kServerDate;
    return reply;
}

void UpdateRun::Publish(const std::string& version) { Publish(BuildReply(version)); }

void UpdateRun::Publish(const Reply& build) {
    server_.On(kBuildTarget, build);
    server_.On(kLicenceTarget, Plain(std::string(kLicenceSize, 'L')));
    Reply animation = Plain(fixtures::MakeAnimation(kAnimationFrames));
    // So that the text before its answer can be seen.
    animation.delay = milliseconds(300);
    server_.On(kAnimationTarget, animation);
}

std::string UpdateRun::Sign(const std::string& build) {
    const MinisignSigner maker("maker");
    server_.On(kSignatureTarget,
               Plain(maker.SignBuild(HashOfBuild(build), TrustedCommentFor("tolvex30.exe"))));
    return "SigningKeys=" + maker.PublicKeyText() + "\r\n";
}

void UpdateRun::Install(const std::string& version) const {
    folder_->Write("tolvex.exe", Build(version));
}

void UpdateRun::Stage(const std::string& version, UtcTime time) const {
    folder_->Write("tolvex30.exe", Build(version));
    folder_->SetTime("tolvex30.exe", time);
}

void UpdateRun::LetMainProgramRecord() const { folder_->Write(kOrdersName, kOrdersToRecord); }

void UpdateRun::Start(const std::string& httpProxy) {
    before_ = folder_->Take();
    updater_.emplace(folder_->Updater(), httpProxy);
    transcript_.emplace(updater_->Running().Id(), server_);
}

void UpdateRun::StartToMainWindow() {
    Start();
    updater_->AwaitWindow(kMain, kLongestStart);
}

// What goes as fast as it came would otherwise be missing in the transcript.
void UpdateRun::AwaitInTranscript(HWND window) {
    if (!transcript_) {
        return;
    }
    Await(
        "the window in the transcript", [&] { return transcript_->HasSeen(window); },
        kLongestReaction);
}

void UpdateRun::AnswerBox(const std::string& text, int button, const std::string& title) {
    const Box box = updater_->AwaitMessageBox(kLongestStage);
    EXPECT_EQ(box.title, title);
    EXPECT_EQ(box.text, text);
    AwaitInTranscript(box.window);
    updater_->Answer(box, button);
}

void UpdateRun::AnswerMissingBuildBox() {
    AnswerBox(MissingFileText(InFolder("tolvex30.exe")), IDOK);
}

void UpdateRun::AnswerCorruptFileBox(const std::string& name) {
    AnswerBox(CorruptFileText(InFolder(name)), IDOK);
}

void UpdateRun::AnswerBackupBox(const std::string& version) {
    AnswerBox("A backup file for your current version of tolvex was not found in\r\n'" +
                  FolderText() + "'.\r\n\r\nMaking a copy of tolvex.exe as 'tolvex." + version +
                  ".exe'",
              IDOK);
}

void UpdateRun::AnswerFailure(const std::string& caption, const std::string& message) {
    const std::string expected = message +
                                 "\r\n\r\n\r\nIf you continue to have problems with swift patch\r\n"
                                 "Please call q-Tolvex Technical Support at\r\n";
    const HWND dialog = updater_->AwaitWindow(kFailure, kLongestStage);
    AwaitInTranscript(dialog);
    EXPECT_EQ(updater_->Caption(kFailure), caption);
    EXPECT_EQ(updater_->Text(kFailureText).substr(0, expected.size()), expected);
    updater_->Press(kFailureExit);
    updater_->AwaitNoWindow(kFailure, kLongestReaction);
}

void UpdateRun::AnswerNoConnection() {
    AnswerFailure("No Connection",
                  "\r\nNo connection to the q-tolvex update server.\r\n\r\n"
                  "Please check your internet connection and try again later.");
}

void UpdateRun::AwaitOffer() { updater_->AwaitText(kLblStatus, kOffer, kLongestStage); }

void UpdateRun::InstallOffered(const std::string& version) {
    updater_->Press(kCmdInstall);
    AnswerBackupBox(version);
    updater_->AwaitText(kLblAnimationMsg, "You have installed the latest version of q-tolvex.",
                        kLongestReaction);
}

void UpdateRun::UpdateFromTheServer() {
    Publish("3.0.12.5");
    Install("3.0.11.0");
    LetMainProgramRecord();
    StartToMainWindow();
    AnswerMissingBuildBox();
    AwaitOffer();
    InstallOffered("3.00.11.00");
    Close();
    MainProgram(folder_->Path(), kLongestReaction).Close();
}

void UpdateRun::AwaitPercentage(int percentage) {
    const auto reached = [&] {
        const std::string text = updater_->Text(kLblStatus);
        return text.find(" % download completed") != std::string::npos &&
               std::stoi(text) >= percentage;
    };
    Await(std::to_string(percentage) + " % of the download", reached, kLongestStage);
}

void UpdateRun::Restore(const std::string& program, const std::string& staged) const {
    for (const auto& [name, contents] : folder_->Take()) {
        if (kFurnished.count(name) == 0) {
            std::filesystem::remove(folder_->File(name));
        }
    }
    folder_->Write("tolvex.exe", program);
    if (!staged.empty()) {
        folder_->Write("tolvex30.exe", staged);
        folder_->SetTime("tolvex30.exe", kServerTime + std::chrono::hours(24));
    }
}

// The program empties the box, too, when it has shown a failure: a press that comes after that
// fills it again.
void UpdateRun::SwitchOffStart() {
    Await(
        "the empty check box",
        [this] {
            if (updater_->Checked(kChkRunTolvex)) {
                updater_->Press(kChkRunTolvex);
            }
            return !updater_->Checked(kChkRunTolvex);
        },
        kLongestReaction);
}

void UpdateRun::CloseQuietly() {
    SwitchOffStart();
    Close();
}

void UpdateRun::Close() {
    updater_->Press(kCmdClose);
    updater_->AwaitEnd(kLongestReaction);
}

void UpdateRun::ExpectRequests(const std::vector<std::string>& requests) const {
    std::vector<std::string> seen;
    for (const Request& request : server_.Requests()) {
        const bool ours = BeginsWith(request.target, "/upd/");
        seen.push_back(request.method + " " + (ours ? request.target.substr(5) : request.target));
    }
    EXPECT_EQ(seen, requests);
}

void UpdateRun::ExpectFiles(std::vector<std::string> differences) const {
    std::vector<std::string> found = Differences(before_, folder_->Take());
    std::sort(found.begin(), found.end());
    std::sort(differences.begin(), differences.end());
    EXPECT_EQ(found, differences);
}

void UpdateRun::ExpectNothingStarted() const {
    EXPECT_EQ(ProcessesOf(folder_->File("tolvex.exe")), std::vector<DWORD>{});
    EXPECT_FALSE(folder_->Has(kRecordName));
}

void UpdateRun::ExpectInOrder(const Control& control, const std::vector<std::string>& texts) const {
    const std::vector<std::string> shown = transcript_->TextsOf(control);
    auto place = shown.begin();
    for (const std::string& text : texts) {
        place = std::find(place, shown.end(), text);
        if (place == shown.end()) {
            ADD_FAILURE() << control.name << " did not show, in its turn, \"" << OneLine(text)
                          << "\"";
            return;
        }
    }
}

void UpdateRun::ExpectBoxes(const std::vector<std::string>& titles) const {
    std::vector<std::string> seen = transcript_->TextsOf({kMessageBoxClass, 0, ""});
    std::erase(seen, Transcript::kGone);
    EXPECT_EQ(seen, titles);
}

void UpdateRun::ExpectStopped() const {
    updater_->AwaitEnabled(kCmdClose, kLongestReaction);
    // The mark goes a moment after the button can be pressed.
    Await(
        "the check box without its mark", [this] { return !updater_->Checked(kChkRunTolvex); },
        kLongestReaction);
    EXPECT_FALSE(updater_->Visible(kAnimation1));
    EXPECT_FALSE(updater_->Visible(kProgressBar1));
    EXPECT_EQ(updater_->Text(kLblStatus), "Update disabled.");
}

std::string UpdateRun::FolderText() const {
    const std::wstring path = folder_->Path().native();
    return Utf8(SpelledByCodePage(path) ? path : ShortName(path));
}

}  // namespace swiftpatch::e2e
