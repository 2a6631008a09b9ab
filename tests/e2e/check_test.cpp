#include <string>

#include "e2e/text.h"
#include "e2e/update_run.h"

namespace swiftpatch::e2e {
namespace {

using Check = UpdateRun;

constexpr milliseconds kSoon{10000};
constexpr milliseconds kStage{40000};

const std::vector<std::string> kThreeProbes{"HEAD tolvex30.exe", "HEAD tolvex30.exe",
                                            "HEAD tolvex30.exe"};

// Hours by which the local time is ahead of UTC, as a whole number.
int OffsetHours() {
    SYSTEMTIME utc = {};
    SYSTEMTIME local = {};
    FILETIME utcTicks = {};
    FILETIME localTicks = {};
    GetSystemTime(&utc);
    SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local);
    SystemTimeToFileTime(&utc, &utcTicks);
    SystemTimeToFileTime(&local, &localTicks);
    const auto ticks = [](const FILETIME& time) {
        return static_cast<std::int64_t>((std::uint64_t{time.dwHighDateTime} << 32U) |
                                         time.dwLowDateTime);
    };
    constexpr std::int64_t kTicksPerHour = std::int64_t{36000000000};
    return static_cast<int>((ticks(localTicks) - ticks(utcTicks)) / kTicksPerHour);
}

std::string SizeOf(const std::string& bytes) { return std::to_string(bytes.size()); }

TEST_F(Check, EqualVersionsAndNoNewerServerCopyNeedNothing) {
    Publish("3.0.12.5");
    Install("3.0.12.5");
    Stage("3.0.12.5", kServerTime);
    StartToMainWindow();
    updater_->AwaitText(kLblAnimationMsg, "You are running the latest version of q-tolvex", kStage);
    updater_->AwaitEnabled(kCmdClose, kSoon);
    EXPECT_EQ(updater_->Text(kLblStatus), "");
    EXPECT_FALSE(updater_->Visible(kCmdInstall));
    EXPECT_FALSE(updater_->Visible(kProgressBar1));
    EXPECT_FALSE(updater_->Visible(kAnimation1));
    const std::string report = updater_->Text(kTxtDebug);
    const std::string end = "with GMT offset of " + std::to_string(OffsetHours()) +
                            " hours.\r\n"
                            "Date of app.path tolvex30.exe    = ";
    EXPECT_TRUE(BeginsWith(
        report, "Update Information....\r\nDate of server file  tolvex30.exe  = 2/5/2020 "))
        << report;
    EXPECT_NE(report.find(end + "2/5/2020 "), std::string::npos) << report;
    EXPECT_NE(report.find("\r\nServer Version is:   0 days and 0 hours newer.\r\n"
                          "Product Version '" +
                          InFolder("tolvex30.exe") + "' = 3.00.12.05\r\nProduct Version '" +
                          InFolder("tolvex.exe") +
                          "' = 3.00.12.05\r\n"
                          "Size of Server      tolvex30.exe  = " +
                          SizeOf(Build("3.0.12.5")) + "\r\nSize of '" + InFolder("tolvex30.exe") +
                          "'  = " + SizeOf(Build("3.0.12.5")) + "\r\nSize of '" +
                          InFolder("tolvex.exe") + "'  = " + SizeOf(Build("3.0.12.5"))),
              std::string::npos)
        << report;
    CloseQuietly();
    ExpectRequests(kThreeProbes);
    ExpectFiles({});
}

TEST_F(Check, BuildFromAnEarlierDownloadIsOfferedAndInstalledWithoutADownload) {
    Publish("3.0.12.5");
    Install("3.0.11.0");
    Stage("3.0.12.5", kServerTime + std::chrono::hours(24));
    StartToMainWindow();
    AwaitOffer();
    EXPECT_EQ(updater_->Text(kLblAnimationMsg),
              "You have downloaded the latest version of q-tolvex");
    EXPECT_EQ(updater_->Text(kLblTolvexVersion),
              "q-tolvex Version available to install: 3.00.12.05");
    EXPECT_TRUE(updater_->Visible(kLblTolvexVersion));
    InstallOffered("3.00.11.00");
    CloseQuietly();
    ExpectRequests(kThreeProbes);
    ExpectFiles({"created tolvex.3.00.11.00.exe", "changed tolvex.exe"});
    EXPECT_EQ(folder_->Read("tolvex.exe"), Build("3.0.12.5"));
    EXPECT_EQ(folder_->Read("tolvex.3.00.11.00.exe"), Build("3.0.11.0"));
}

TEST_F(Check, NewerServerCopyOfTheSameVersionIsFetchedAgain) {
    Publish("3.0.12.5");
    Install("3.0.12.5");
    Stage("3.0.12.5", kServerTime - std::chrono::hours(24));
    StartToMainWindow();
    updater_->AwaitText(kLblStatus, "No update is required at this time.", kStage);
    Await(
        "the new caption",
        [this] {
            return updater_->Caption(kMain) ==
                   "Swift Patch - Download No Update Required - All Files Current";
        },
        kSoon);
    // The program yields once more between the caption and this.
    Await(
        "the end of the busy display", [this] { return !updater_->Visible(kFraMessages); }, kSoon);
    CloseQuietly();
    ExpectRequests(
        {"HEAD tolvex30.exe", "HEAD tolvex30.exe", "HEAD tolvex30.exe", "GET tolvex30.exe"});
    ExpectFiles({});
}

// An installed minor version that is higher decides, whatever the major versions are.
TEST_F(Check, InstalledTwoPointNineFindsNothingNewerInThreePointZero) {
    Publish("3.0.12.5");
    Install("2.9.0.0");
    StartToMainWindow();
    AnswerMissingBuildBox();
    updater_->AwaitText(kLblStatus, "No update is required at this time.", kStage);
    EXPECT_EQ(updater_->Text(kLblTolvexVersion),
              "q-tolvex Version available to install: 3.00.12.05");
    CloseQuietly();
    ExpectFiles({"created tolvex30.exe"});
}

TEST_F(Check, MissingMainProgramIsReportedAfterTheDownload) {
    Publish("3.0.12.5");
    StartToMainWindow();
    AnswerMissingBuildBox();
    AnswerBox("No version information available for\r\n'" + InFolder("tolvex.exe") +
                  "'\r\n\r\nThe file does not exist.\r\n\r\nDownloading '" +
                  InFolder("tolvex.exe") + "'",
              IDOK);
    AnswerFailure("Program File Not Found",
                  "The main program does not exist in the specified posiiton.");
    ExpectStopped();
    Close();
    ExpectFiles({"created tolvex30.exe"});
}

TEST_F(Check, MissingAnimationIsFetchedBeforeTheBuild) {
    Publish("3.0.12.5");
    Install("3.0.11.0");
    const std::string animation = folder_->Read("filecopy.avi");
    std::filesystem::remove(folder_->File("filecopy.avi"));
    StartToMainWindow();
    AnswerMissingBuildBox();
    AwaitOffer();
    CloseQuietly();
    ExpectRequests({"HEAD tolvex30.exe", "HEAD filecopy.avi", "GET filecopy.avi",
                    "HEAD tolvex30.exe", "HEAD tolvex30.exe", "GET tolvex30.exe"});
    ExpectFiles({"created filecopy.avi", "created tolvex30.exe"});
    EXPECT_EQ(folder_->Read("filecopy.avi"), animation);
    EXPECT_EQ(folder_->Read("tolvex30.exe"), Build("3.0.12.5"));
    ExpectInOrder(kLblAnimationMsg,
                  {"Downloading\r\nmissing AVI file.", "downloading ....\r\nmissing AVI file."});
}

TEST_F(Check, MissingAnimationThatTheServerLacksStopsTheCheck) {
    Publish("3.0.12.5");
    server_.On(kAnimationTarget, NotFound());
    Install("3.0.11.0");
    std::filesystem::remove(folder_->File("filecopy.avi"));
    StartToMainWindow();
    AnswerFailure("Incorrect Download Link",
                  "The download link your are requesting is invalid.\r\nThe link: " +
                      ServerFolder() + "filecopy.avi is not available.");
    ExpectStopped();
    Close();
    ExpectRequests({"HEAD tolvex30.exe", "HEAD filecopy.avi"});
    ExpectFiles({});
}

TEST_F(Check, FileThatIsNoAnimationIsNoReasonToMissAnUpdate) {
    Publish("3.0.12.5");
    Install("3.0.11.0");
    folder_->Write("filecopy.avi", std::string(5000, 'x'));
    StartToMainWindow();
    AnswerMissingBuildBox();
    AwaitOffer();
    CloseQuietly();
    ExpectFiles({"created tolvex30.exe"});
}

TEST_F(Check, ServerThatIsDownIsNoConnection) {
    const DeadPort nobody;
    folder_->WriteSettings(nobody.Host() + "/upd/");
    Install("3.0.11.0");
    StartToMainWindow();
    AnswerNoConnection();
    ExpectStopped();
    EXPECT_EQ(updater_->Text(kLblAnimationMsg), "No connection to the q-tolvex update server.");
    EXPECT_FALSE(updater_->Visible(kCmdRetry));
    Close();
    ExpectFiles({});
}

TEST_F(Check, ServerWithoutTheBuildIsABadLink) {
    Publish("3.0.12.5");
    server_.On(kBuildTarget, NotFound());
    Install("3.0.11.0");
    StartToMainWindow();
    AnswerFailure("Bad Download Link", "The download link is invalid.\r\n\r\nThe link: " +
                                           ServerFolder() + "tolvex30.exe is not available.");
    ExpectStopped();
    Close();
    ExpectRequests({"HEAD tolvex30.exe", "HEAD LICENSE.TXT", "HEAD tolvex30.exe"});
    ExpectFiles({});
}

}  // namespace
}  // namespace swiftpatch::e2e
