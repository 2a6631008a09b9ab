#include <algorithm>
#include <array>

#include "e2e/text.h"
#include "e2e/update_run.h"
#include "e2e/win32.h"

// Needs the platform's own headers before it.
#include <shlobj.h>

namespace swiftpatch::e2e {
namespace {

using FullUpdate = UpdateRun;

constexpr milliseconds kSoon{10000};

// The numbers of all the texts "N % download completed".
std::vector<int> Percentages(const std::vector<std::string>& texts) {
    std::vector<int> numbers;
    for (const std::string& text : texts) {
        if (text.find(" % download completed") != std::string::npos) {
            numbers.push_back(std::stoi(text));
        }
    }
    return numbers;
}

// The files in the network library's cache, apart from those in which it keeps its books.
std::vector<std::string> CachedFiles() {
    std::array<wchar_t, MAX_PATH> folder{};
    SHGetFolderPathW(nullptr, CSIDL_INTERNET_CACHE, nullptr, 0, folder.data());
    std::vector<std::string> files;
    std::error_code ignored;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(folder.data(), ignored)) {
        const std::string name = PathText(entry.path().filename());
        if (entry.is_regular_file() && name != "index.dat" && name != "desktop.ini") {
            files.push_back(PathText(entry.path()));
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

TEST_F(FullUpdate, DownloadsInstallsKeepsABackupAndStartsTheNewBuild) {
    Reply offered = BuildReply("3.0.12.5");
    offered.bytesPerSecond = 200000;
    Publish(offered);
    // The second answer comes late, so that the text before it can be seen.
    Reply late = BuildReply("3.0.12.5");
    late.delay = milliseconds(500);
    server_.Once("HEAD", kBuildTarget, BuildReply("3.0.12.5"));
    server_.Once("HEAD", kBuildTarget, late);
    Install("3.0.11.0");
    LetMainProgramRecord();
    StartToMainWindow();
    AnswerMissingBuildBox();
    AwaitOffer();
    EXPECT_EQ(updater_->Text(kLblAnimationMsg),
              "You have downloaded the latest version of q-tolvex");
    EXPECT_EQ(updater_->Text(kLblTolvexVersion),
              "q-tolvex Version available to install: 3.00.12.05");
    EXPECT_EQ(
        updater_->Text(kTxtDebug),
        "Support Information is not available for tolvex30.exe because the comparison file, '" +
            InFolder("tolvex30.exe") + "' is missing.");
    EXPECT_EQ(updater_->Progress(kProgressBar1), 0);
    EXPECT_FALSE(updater_->Visible(kCmdRetry));

    InstallOffered("3.00.11.00");
    updater_->AwaitText(kLblStatus, "", kSoon);
    EXPECT_EQ(updater_->Text(kLblTolvexVersion), "q-tolvex Version installed: 3.00.12.05");
    EXPECT_FALSE(updater_->Visible(kCmdInstall));
    EXPECT_TRUE(updater_->Checked(kChkRunTolvex));

    Close();
    MainProgram(folder_->Path(), kSoon).Close();
    EXPECT_EQ(RecordIn(folder_->Path()),
              (std::vector<std::string>{"started 3.0.12.5 " + PathText(folder_->File("tolvex.exe")),
                                        "close message"}));
    ExpectRequests(
        {"HEAD tolvex30.exe", "HEAD tolvex30.exe", "HEAD tolvex30.exe", "GET tolvex30.exe"});
    ExpectFiles({"created started.txt", "created tolvex.3.00.11.00.exe", "changed tolvex.exe",
                 "created tolvex30.exe"});
    EXPECT_EQ(folder_->Read("tolvex.exe"), Build("3.0.12.5"));
    EXPECT_EQ(folder_->Read("tolvex30.exe"), Build("3.0.12.5"));
    EXPECT_EQ(folder_->Read("tolvex.3.00.11.00.exe"), Build("3.0.11.0"));
    ExpectInOrder(kLblAnimationMsg, {"checking connection to q-tolvex servers...",
                                     "q-tolvex server\r\nconnection available.",
                                     "downloading the\r\nlatest q-tolvex version."});
    const std::vector<int> percentages = Percentages(transcript_->TextsOf(kLblStatus));
    EXPECT_GT(percentages.size(), 10U);
    EXPECT_TRUE(std::is_sorted(percentages.begin(), percentages.end()));
    ExpectBoxes({kApplication, kApplication});
    EXPECT_EQ(transcript_->Windows(),
              (std::vector<std::string>{"frmSplash1", "frmSwiftPatch", "#32770"}));
}

// Every request goes over the connection of the one before, as long as the server keeps it open.
TEST_F(FullUpdate, UsesOneConnectionAndLeavesNothingInTheCache) {
    const std::vector<std::string> cached = CachedFiles();
    Publish("3.0.12.5");
    Install("3.0.11.0");
    StartToMainWindow();
    AnswerMissingBuildBox();
    AwaitOffer();
    CloseQuietly();
    ASSERT_EQ(server_.Requests().size(), 4U);
    for (const Request& request : server_.Requests()) {
        EXPECT_EQ(request.connection, 1) << request.Line();
        EXPECT_EQ(request.head.find("Cookie:"), std::string::npos);
        EXPECT_EQ(request.head.find("If-Modified-Since:"), std::string::npos);
    }
    ExpectFiles({"created tolvex30.exe"});
    EXPECT_EQ(CachedFiles(), cached);
}

class FolderNames : public UpdateRun, public ::testing::WithParamInterface<const wchar_t*> {};

TEST_P(FolderNames, UpdateWorksInAFolderOfThisName) {
    UseFolder(GetParam());
    UpdateFromTheServer();
    ExpectFiles({"created started.txt", "created tolvex.3.00.11.00.exe", "changed tolvex.exe",
                 "created tolvex30.exe"});
    EXPECT_EQ(folder_->Read("tolvex.exe"), Build("3.0.12.5"));
    EXPECT_EQ(folder_->Read("tolvex.3.00.11.00.exe"), Build("3.0.11.0"));
}

INSTANTIATE_TEST_SUITE_P(FullUpdate, FolderNames,
                         ::testing::Values(L"with  blanks and \u00e4\u00f6\u00fc\u00df",
                                           L"\u65e5\u672c \u8a9e"),
                         [](const auto& parameter) {
                             return parameter.index == 0 ? "InTheCodePage" : "OutsideIt";
                         });

}  // namespace
}  // namespace swiftpatch::e2e
