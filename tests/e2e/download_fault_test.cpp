// What can go wrong while the build comes in.
#include "e2e/held_file.h"
#include "e2e/read_only_folder.h"
#include "e2e/update_run.h"

namespace swiftpatch::e2e {
namespace {

using Download = UpdateRun;

constexpr milliseconds kSoon{10000};
constexpr milliseconds kStage{40000};

const std::vector<std::string> kWholeCheck{"HEAD tolvex30.exe", "HEAD tolvex30.exe",
                                           "HEAD tolvex30.exe", "GET tolvex30.exe"};

std::string TimeoutText(const std::string& error) {
    return "Error # " + error +
           "\r\nThe server or internet connection has timed out.\r\n"
           "Please check your internet connection.";
}

constexpr char kTimedOut[] = "35758\r\nRequest timed out";
constexpr char kNoSubscript[] = "9\r\nSubscript out of range";

class BrokenDownload : public UpdateRun {
protected:
    /// The server offers 3.0.12.5, but its body ends like this after 100000 bytes.
    void PublishBroken(BodyEnd end) {
        Publish("3.0.12.5");
        Reply broken = BuildReply("3.0.12.5");
        broken.end = end;
        broken.endAfter = 100000;
        server_.Once("GET", kBuildTarget, broken);
        Install("3.0.11.0");
    }

    void ExpectRetryOffered() {
        AnswerFailure("Internet Connection Timeout", TimeoutText(kTimedOut));
        ExpectStopped();
        EXPECT_EQ(updater_->Text(kLblAnimationMsg), "Download failed... Timed-out Connection.");
        EXPECT_TRUE(updater_->Visible(kCmdRetry));
        EXPECT_TRUE(updater_->Enabled(kCmdRetry));
    }
};

TEST_F(BrokenDownload, StalledBodyTimesOutAndRetryBringsTheWholeBuild) {
    PublishBroken(BodyEnd::kStall);
    StartToMainWindow();
    AnswerMissingBuildBox();
    AwaitPercentage(15);
    const SteadyTime stalled = std::chrono::steady_clock::now();
    updater_->AwaitWindow(kFailure, kStage);
    const auto waited = std::chrono::steady_clock::now() - stalled;
    // Fifteen seconds of silence, as far as a machine with other work lets this be seen.
    EXPECT_GE(waited, seconds(8));
    EXPECT_LE(waited, seconds(60));
    ExpectRetryOffered();

    updater_->Press(kCmdRetry);
    Await(
        "the hidden button", [this] { return !updater_->Visible(kCmdRetry); }, kSoon);
    // What came of the first attempt is no complete program.
    AnswerCorruptFileBox("tolvex30.exe");
    AwaitOffer();
    InstallOffered("3.00.11.00");
    Close();
    std::vector<std::string> twice = kWholeCheck;
    twice.insert(twice.end(), kWholeCheck.begin(), kWholeCheck.end());
    ExpectRequests(twice);
    ExpectFiles({"created tolvex.3.00.11.00.exe", "changed tolvex.exe", "created tolvex30.exe"});
    EXPECT_EQ(folder_->Read("tolvex.exe"), Build("3.0.12.5"));
}

TEST_F(BrokenDownload, ResetConnectionOffersRetryAndKeepsThePartThatCame) {
    PublishBroken(BodyEnd::kReset);
    StartToMainWindow();
    AnswerMissingBuildBox();
    ExpectRetryOffered();
    Close();
    ExpectRequests(kWholeCheck);
    ExpectFiles({"created tolvex30.exe"});
    const std::string part = folder_->Read("tolvex30.exe");
    EXPECT_LE(part.size(), 100000U);
    EXPECT_EQ(part, Build("3.0.12.5").substr(0, part.size()));
}

// For the platform an orderly close ends the body, whatever length was promised.
TEST_F(BrokenDownload, ConnectionClosedTooEarlyOffersRetryAndKeepsThePartThatCame) {
    PublishBroken(BodyEnd::kClose);
    StartToMainWindow();
    AnswerMissingBuildBox();
    ExpectRetryOffered();
    Close();
    ExpectRequests(kWholeCheck);
    ExpectFiles({"created tolvex30.exe"});
    EXPECT_EQ(folder_->Read("tolvex30.exe"), Build("3.0.12.5").substr(0, 100000));
}

// Only an empty chunk ends the body: its length is not compared with what the probe said.
TEST_F(Download, BodyShorterThanProbedIsDeletedAsCorrupt) {
    Publish("3.0.12.5");
    Reply shorter = BuildReply("3.0.12.5");
    shorter.body = Body(Build("3.0.12.5").substr(0, 150000));
    server_.On("GET", kBuildTarget, shorter);
    Install("3.0.11.0");
    StartToMainWindow();
    AnswerMissingBuildBox();
    AnswerCorruptFileBox("tolvex30.exe");
    AnswerFailure("Internet Connection Timeout", TimeoutText(kNoSubscript));
    ExpectStopped();
    Close();
    ExpectFiles({});
}

TEST_F(Download, EmptyBodyIsDeletedAsCorrupt) {
    Publish("3.0.12.5");
    Reply empty = BuildReply("3.0.12.5");
    empty.body = Body();
    server_.On("GET", kBuildTarget, empty);
    Install("3.0.11.0");
    StartToMainWindow();
    AnswerMissingBuildBox();
    AnswerCorruptFileBox("tolvex30.exe");
    AnswerFailure("Internet Connection Timeout", TimeoutText(kNoSubscript));
    ExpectStopped();
    Close();
    ExpectFiles({});
}

TEST_F(Download, BodyLongerThanProbedShowsMoreThanAHundredPercent) {
    Publish("3.0.12.5");
    Reply probed = BuildReply("3.0.12.5");
    probed.contentLength = "200000";
    Reply longer = BuildReply("3.0.12.5");
    longer.bytesPerSecond = 150000;
    server_.On("HEAD", kBuildTarget, probed);
    server_.On("GET", kBuildTarget, longer);
    Install("3.0.11.0");
    StartToMainWindow();
    AnswerMissingBuildBox();
    AwaitPercentage(105);
    // The bar is painted a moment after the text.
    Await(
        "the full bar", [&] { return updater_->Progress(kProgressBar1) == 100; }, kSoon);
    AwaitOffer();
    CloseQuietly();
    ExpectFiles({"created tolvex30.exe"});
    EXPECT_EQ(folder_->Read("tolvex30.exe"), Build("3.0.12.5"));
}

TEST_F(Download, BodyWithoutALengthComesInToItsEnd) {
    Publish("3.0.12.5");
    Reply unmeasured = BuildReply("3.0.12.5");
    unmeasured.omitContentLength = true;
    server_.On("GET", kBuildTarget, unmeasured);
    Install("3.0.11.0");
    StartToMainWindow();
    AnswerMissingBuildBox();
    AwaitOffer();
    CloseQuietly();
    ExpectFiles({"created tolvex30.exe"});
    EXPECT_EQ(folder_->Read("tolvex30.exe"), Build("3.0.12.5"));
}

TEST_F(Download, OfferedBuildWithoutAVersionBlockIsDeleted) {
    Publish("none");
    Install("3.0.11.0");
    StartToMainWindow();
    AnswerMissingBuildBox();
    AnswerCorruptFileBox("tolvex30.exe");
    AnswerFailure("Internet Connection Timeout", TimeoutText(kNoSubscript));
    ExpectStopped();
    Close();
    ExpectFiles({});
}

TEST_F(Download, StagedBuildInUseIsReportedAndLeftAlone) {
    Publish("3.0.12.5");
    Install("3.0.11.0");
    Stage("3.0.11.0", kServerTime - std::chrono::hours(24));
    const HeldFile held(folder_->File("tolvex30.exe"));
    StartToMainWindow();
    AnswerBox("Error: 75\r\nPath/File access error\r\n\r\ntolvex30.exe is probably running.", IDOK);
    updater_->AwaitText(kLblStatus, "Download Failed.", kSoon);
    updater_->AwaitEnabled(kCmdClose, kSoon);
    EXPECT_FALSE(updater_->Visible(kAnimation1));
    CloseQuietly();
    ExpectRequests(kWholeCheck);
    ExpectFiles({});
}

TEST_F(Download, ReadOnlyFolderIsReportedAndNothingIsWritten) {
    Publish("3.0.12.5");
    Install("3.0.11.0");
    const ReadOnlyFolder locked(folder_->Path());
    if (!locked.Effective()) {
        GTEST_SKIP() << "this system lets this user write everywhere";
    }
    StartToMainWindow();
    AnswerMissingBuildBox();
    AnswerFailure("Internet Connection Timeout", TimeoutText("75\r\nPath/File access error"));
    ExpectStopped();
    Close();
    ExpectFiles({});
}

// A folder of that name stands for everything that keeps the file from being made.
TEST_F(Download, TargetThatCannotBeMadeIsReportedAndNothingIsWritten) {
    Publish("3.0.12.5");
    Install("3.0.11.0");
    std::filesystem::create_directory(folder_->File("tolvex30.exe"));
    StartToMainWindow();
    AnswerMissingBuildBox();
    AnswerFailure("Internet Connection Timeout", TimeoutText("75\r\nPath/File access error"));
    ExpectStopped();
    Close();
    ExpectFiles({});
}

}  // namespace
}  // namespace swiftpatch::e2e
