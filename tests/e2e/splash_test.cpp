#include "e2e/update_run.h"
#include "shared/branding.h"
#include "shared/version.h"

namespace swiftpatch::e2e {
namespace {

using Splash = UpdateRun;

constexpr milliseconds kSoon{10000};
// The fade before the texts takes its time on a busy machine.
constexpr milliseconds kLongestStart{40000};

std::string Padded(int number) {
    std::string digits = std::to_string(number);
    digits.insert(0, digits.size() < 3 ? 3 - digits.size() : 0, '0');
    return digits;
}

int DayOfMonth() {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    return now.wDay;
}

void ExpectMessageOfTheDay(const std::string& text, int day) {
    switch (day % 4) {
        case 0:
            EXPECT_EQ(text, SWIFTPATCH_SLOGAN);
            break;
        case 1:
            EXPECT_NE(text.find("\r\n         "), std::string::npos) << text;
            break;
        case 2:
            EXPECT_EQ(text, "Don't forget to\r\nBackup your files.");
            break;
        default:
            EXPECT_EQ(text, "check for New Features!\r\n" SWIFTPATCH_WEB_ADDRESS);
            break;
    }
}

TEST_F(Splash, ShowsItsTextsAndExitEndsTheProgramBeforeAnyRequest) {
    Publish("3.0.12.5");
    Install("3.0.11.0");
    Start();
    updater_->AwaitText(kSplashLoading, "Preferences OK", kLongestStart);
    const int day = DayOfMonth();
    const std::string message = updater_->Text(kSplashMain0);
    EXPECT_EQ(updater_->Text(kSplashMain1), message);
    if (day == DayOfMonth()) {
        ExpectMessageOfTheDay(message, day);
    }
    EXPECT_EQ(updater_->Text(kSplashTitle0), "Tolvex Swift Patch and Technical Support");
    EXPECT_EQ(updater_->Text(kSplashTitle1), "Tolvex Swift Patch and Technical Support");
    EXPECT_EQ(updater_->Text(kSplashVersion), "Version " + std::to_string(kVersionMajor) + "." +
                                                  std::to_string(kVersionMinor) + "." +
                                                  Padded(kVersionRevision));
    RECT place = {};
    GetWindowRect(updater_->Window(kSplash), &place);
    EXPECT_NEAR((place.left + place.right) / 2, GetSystemMetrics(SM_CXSCREEN) / 2, 1);
    EXPECT_NEAR((place.top + place.bottom) / 2, GetSystemMetrics(SM_CYSCREEN) / 2, 1);
    updater_->Press(kSplashExit);
    updater_->AwaitEnd(kSoon);
    EXPECT_EQ(transcript_->Windows(), std::vector<std::string>{"frmSplash1"});
    ExpectRequests({});
    ExpectFiles({});
}

TEST_F(Splash, StaysThreeSecondsAndIsGoneBeforeTheMainWindowIsThere) {
    Publish("3.0.12.5");
    Install("3.0.12.5");
    Stage("3.0.12.5", kServerTime + std::chrono::hours(24));
    Start();
    updater_->AwaitText(kSplashLoading, "Preferences OK", kLongestStart);
    const SteadyTime loaded = std::chrono::steady_clock::now();
    updater_->AwaitWindow(kMain, kSoon);
    const auto shown = std::chrono::steady_clock::now() - loaded;
    // The text was seen a moment after it was set.
    EXPECT_GE(shown, milliseconds(2800));
    EXPECT_EQ(updater_->Window(kSplash), nullptr);
    EXPECT_EQ(updater_->Text(kLblVersion), "Swift Patch Version: " + std::to_string(kVersionMajor) +
                                               "." + std::to_string(kVersionMinor) + "." +
                                               Padded(kVersionRevision));
    updater_->AwaitEnabled(kCmdClose, seconds(20));
    CloseQuietly();
    ExpectFiles({});
}

/// The mark of an instance that may not be opened, as that of one with more rights: its list of
/// rights is empty, so that nobody has any.
class ForbiddenMark {
public:
    ForbiddenMark() {
        ACL nobody{};
        InitializeAcl(&nobody, sizeof(nobody), ACL_REVISION);
        SECURITY_DESCRIPTOR rights{};
        InitializeSecurityDescriptor(&rights, SECURITY_DESCRIPTOR_REVISION);
        SetSecurityDescriptorDacl(&rights, TRUE, &nobody, FALSE);
        SECURITY_ATTRIBUTES attributes{sizeof(attributes), &rights, FALSE};
        mutex_ = CreateMutexW(&attributes, FALSE, L"SwiftPatch.Instance");
    }
    ~ForbiddenMark() { CloseHandle(mutex_); }
    ForbiddenMark(const ForbiddenMark&) = delete;
    ForbiddenMark& operator=(const ForbiddenMark&) = delete;

private:
    HANDLE mutex_ = nullptr;
};

TEST_F(Splash, InstanceThatMayNotBeOpenedCountsAsRunning) {
    const ForbiddenMark first;
    Publish("3.0.12.5");
    Install("3.0.11.0");
    Start();
    updater_->AwaitEnd(kSoon);
    EXPECT_EQ(transcript_->Windows(), std::vector<std::string>{});
    ExpectRequests({});
    ExpectFiles({});
}

TEST_F(Splash, SecondInstanceEndsWithoutAWindow) {
    Publish("3.0.12.5");
    Install("3.0.11.0");
    Start();
    updater_->AwaitText(kSplashLoading, "Preferences OK", kLongestStart);
    const Updater second(folder_->Updater());
    const Transcript watch(second.Running().Id(), server_);
    second.AwaitEnd(kSoon);
    EXPECT_EQ(watch.Windows(), std::vector<std::string>{});
    EXPECT_TRUE(updater_->Running().Running());
    updater_->Press(kSplashExit);
    updater_->AwaitEnd(kSoon);
    ExpectRequests({});
    ExpectFiles({});
}

}  // namespace
}  // namespace swiftpatch::e2e
