#include <future>

#include "e2e/update_run.h"
#include "e2e/win32.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kSoon{10000};

constexpr char kQuestion[] =
    "Download not finished.... \r\n\r\nAre you sure you want to exit this program?";
constexpr char kQuestionTitle[] = "Confirm Exit";

const std::vector<std::string> kWholeCheck{"HEAD tolvex30.exe", "HEAD tolvex30.exe",
                                           "HEAD tolvex30.exe", "GET tolvex30.exe"};

class Exit : public UpdateRun {
protected:
    /// Goes on to the middle of a download that takes some seconds.
    void StartDownload() {
        Reply offered = BuildReply("3.0.12.5");
        offered.bytesPerSecond = offered.body.Size() / 5;
        Publish(offered);
        Install("3.0.11.0");
        LetMainProgramRecord();
        StartToMainWindow();
        AnswerMissingBuildBox();
        AwaitPercentage(10);
    }

    /// Asks the main window whether the session may end, as the system does.
    std::future<bool> AskForEndOfSession() {
        const HWND window = updater_->Window(kMain);
        return std::async(std::launch::async,
                          [window] { return SendMessageW(window, WM_QUERYENDSESSION, 0, 0) != 0; });
    }

    /// Nothing of the program is left and nothing more is asked of the server.
    void ExpectEnded() {
        updater_->AwaitEnd(kSoon);
        ExpectBoxes({kApplication, kQuestionTitle, kQuestionTitle});
        ExpectRequests(kWholeCheck);
    }
};

TEST_F(Exit, NoKeepsTheDownloadGoingToItsEnd) {
    StartDownload();
    EXPECT_FALSE(updater_->Enabled(kCmdClose));
    updater_->CloseByCorner(kMain);
    AnswerBox(kQuestion, IDNO, kQuestionTitle);
    AwaitOffer();
    CloseQuietly();
    ExpectRequests(kWholeCheck);
    ExpectFiles({"created tolvex30.exe"});
    EXPECT_EQ(folder_->Read("tolvex30.exe"), Build("3.0.12.5"));
}

TEST_F(Exit, YesAfterANoEndsAtOnceAndStartsTheInstalledProgram) {
    StartDownload();
    updater_->CloseByCorner(kMain);
    AnswerBox(kQuestion, IDNO, kQuestionTitle);
    AwaitPercentage(25);
    updater_->CloseByCorner(kMain);
    AnswerBox(kQuestion, IDYES, kQuestionTitle);
    ExpectEnded();
    MainProgram(folder_->Path(), kSoon).Close();
    // Only the part that came is there; the installed program is untouched.
    ExpectFiles({"created started.txt", "created tolvex30.exe"});
    EXPECT_LT(folder_->Read("tolvex30.exe").size(), Build("3.0.12.5").size());
    EXPECT_LT(server_.BodyBytesSent(), Build("3.0.12.5").size());
}

TEST_F(Exit, EndOfSessionDuringADownloadAsksFirst) {
    StartDownload();
    SwitchOffStart();
    std::future<bool> refused = AskForEndOfSession();
    AnswerBox(kQuestion, IDNO, kQuestionTitle);
    EXPECT_FALSE(refused.get());
    AwaitPercentage(25);
    std::future<bool> allowed = AskForEndOfSession();
    AnswerBox(kQuestion, IDYES, kQuestionTitle);
    EXPECT_TRUE(allowed.get());
    const HWND window = updater_->Window(kMain);
    if (window != nullptr) {
        PostMessageW(window, WM_ENDSESSION, TRUE, 0);
    }
    ExpectEnded();
    ExpectNothingStarted();
    ExpectFiles({"created tolvex30.exe"});
}

}  // namespace
}  // namespace swiftpatch::e2e
