#include <iostream>

#include "e2e/update_run.h"
#include "e2e/win32.h"
#include "e2e/windows98.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kSoon{10000};
// The system's box breaks ten megabytes into lines for seconds, on a busy machine for more.
constexpr milliseconds kLongestOpening{100000};
constexpr char kLogName[] = "errors.log";

std::string Lines(int count) {
    std::string text;
    for (int line = 1; line <= count; ++line) {
        text += std::to_string(1000000 + line) + " the main program could not save its work\r\n";
    }
    return text;
}

class Log : public UpdateRun {
protected:
    /// Lets a run fail with a log in place, and opens that log.
    void Open(const std::string& bytes) {
        folder_->WriteSettings(ServerFolder(), std::string("LogFileName=") + kLogName + "\r\n");
        folder_->Write(kLogName, bytes);
        Install("3.0.11.0");
        StartToMainWindow();
        AnswerNoConnection();
        // Whoever reads ten megabytes over and over has no time for anything else.
        transcript_->Stop();
        const SteadyTime pressed = std::chrono::steady_clock::now();
        updater_->Press(kCmdReadLog);
        updater_->AwaitWindow(kLog, kLongestOpening);
        opened_ =
            std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - pressed);
    }

    HWND Box() const { return GetDlgItem(updater_->Window(kLog), kTxtLogFile.id); }

    void PressKey(WPARAM key) const {
        SendMessageW(Box(), WM_KEYDOWN, key, 0);
        SendMessageW(Box(), WM_KEYUP, key, 0);
    }

    std::string Copied() const {
        SendMessageW(Box(), WM_COPY, 0, 0);
        std::string text;
        if (OpenClipboard(nullptr)) {
            if (const HANDLE memory = GetClipboardData(CF_TEXT)) {
                text = static_cast<const char*>(GlobalLock(memory));
                GlobalUnlock(memory);
            }
            CloseClipboard();
        }
        return text;
    }

    void BackToMainAndClose() {
        updater_->Press(kCmdMain);
        updater_->AwaitWindow(kMain, kSoon);
        updater_->AwaitNoWindow(kLog, kSoon);
        Close();
    }

    milliseconds opened_{0};
};

TEST_F(Log, OfTenMegabytesOpensWhole) {
    const std::string text = Lines(200000);
    Open(text);
    std::cout << "The log of " << text.size() << " bytes was open after " << opened_.count()
              << " ms.\n";
    // By the clipboard: under Wine 10 a program that asks another for a text of more than some
    // hundred thousand letters gets no answer.
    SendMessageW(Box(), EM_SETSEL, 0, -1);
    EXPECT_TRUE(Copied() == text);
    EXPECT_EQ(SendMessageW(Box(), EM_GETLINECOUNT, 0, 0), 200001);
    PressKey(VK_PRIOR);
    BackToMainAndClose();
}

TEST_F(Log, OnWindows98ShowsTheNewestLinesOfALongOne) {
    const OnWindows98 old;
    const std::string text = Lines(5000);
    Open(text);
    const std::string shown = updater_->Text(kTxtLogFile);
    EXPECT_LT(shown.size(), 64U * 1024);
    EXPECT_GT(shown.size(), 56U * 1024);
    EXPECT_TRUE(text.ends_with(shown));
    EXPECT_TRUE(shown.starts_with("100")) << shown.substr(0, 60);
    BackToMainAndClose();
}

TEST_F(Log, LetsAPersonSelectAndCopy) {
    Open("first line\r\nsecond\tline\r\nthird");
    EXPECT_EQ(updater_->Text(kTxtLogFile), "first line\r\nsecond\tline\r\nthird\r\n");
    SendMessageW(Box(), EM_SETSEL, 6, 18);
    EXPECT_EQ(Copied(), "line\r\nsecond");
    PressKey(VK_HOME);
    PressKey(VK_DOWN);
    EXPECT_EQ(SendMessageW(Box(), EM_GETSEL, 0, 0), MAKELONG(25, 25));
    SendMessageW(Box(), EM_SETSEL, 0, -1);
    EXPECT_EQ(Copied(), "first line\r\nsecond\tline\r\nthird\r\n");
    BackToMainAndClose();
}

TEST_F(Log, IsReadAfreshAtEveryVisit) {
    Open("old\r\n");
    updater_->Press(kCmdMain);
    updater_->AwaitNoWindow(kLog, kSoon);
    folder_->Write(kLogName, "new\r\n");
    updater_->AwaitWindow(kMain, kSoon);
    updater_->Press(kCmdReadLog);
    updater_->AwaitWindow(kLog, kSoon);
    EXPECT_EQ(updater_->Text(kTxtLogFile), "new\r\n");
    // Closed by its corner, it gives way to the main window as well.
    updater_->CloseByCorner(kLog);
    updater_->AwaitWindow(kMain, kSoon);
    Close();
}

}  // namespace
}  // namespace swiftpatch::e2e
