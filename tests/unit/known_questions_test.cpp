#include "unattended/known_questions.h"

#include <gtest/gtest.h>

namespace swiftpatch {
namespace {

Question Box(const std::string& text, const std::string& title = "SwiftPatch") {
    return {kMessageBox, title, text};
}

Question Failure(const std::string& title, const std::string& text = "") {
    return {"frmRunning", title, text};
}

void ExpectFailure(const Question& question, ExitStatus status) {
    const Judgement judgement = Judge(question);
    EXPECT_EQ(judgement.meaning, Meaning::kFailure) << question.title << question.text;
    EXPECT_EQ(judgement.status, status) << question.title << question.text;
}

TEST(KnownQuestions, FailuresAreToldApartByTheirTitles) {
    ExpectFailure(Failure("No Connection"), ExitStatus::kNoConnection);
    ExpectFailure(Failure("Bad Download Link"), ExitStatus::kBadServer);
    ExpectFailure(Failure("Incorrect Download Link"), ExitStatus::kBadServer);
    ExpectFailure(Failure("Error Downloading File"), ExitStatus::kBadServer);
    ExpectFailure(Failure("Program File Not Found"), ExitStatus::kDisk);
    ExpectFailure(Failure("Signature Missing"), ExitStatus::kNotSigned);
    ExpectFailure(Failure("Signature Invalid"), ExitStatus::kNotSigned);
    ExpectFailure(Failure("Signing Key Invalid"), ExitStatus::kNotSigned);
}

TEST(KnownQuestions, ABrokenTransferCountsByItsNumber) {
    const std::string title = "Internet Connection Timeout";
    ExpectFailure(Failure(title, "Error # 35758\r\nRequest timed out"), ExitStatus::kTimedOut);
    ExpectFailure(Failure(title, "Error # 61\r\nDisk full"), ExitStatus::kDisk);
    ExpectFailure(Failure(title, "Error # 9\r\nSubscript out of range"), ExitStatus::kBadServer);
    ExpectFailure(Failure(title, "Error # -3\r\nWho knows"), ExitStatus::kInternal);
}

TEST(KnownQuestions, AFailureThatNobodyHasThoughtOfIsInternal) {
    ExpectFailure(Failure("Something New", "Error # 61"), ExitStatus::kInternal);
}

TEST(KnownQuestions, BoxesWithANumberCountByIt) {
    ExpectFailure(Box("Internet Error: 35754\r\n\r\nUnable to connect"), ExitStatus::kNoConnection);
    ExpectFailure(Box("Error Number: 71\r\n\r\nDisk not ready"), ExitStatus::kDisk);
    ExpectFailure(Box("Error: 75\r\nPath/File access error"), ExitStatus::kDisk);
    ExpectFailure(Box("Run-time error '438':\r\n\r\nObject"), ExitStatus::kInternal);
}

TEST(KnownQuestions, ACopyOverTheProgramCountsAndItsBackupDoesNot) {
    ExpectFailure(Box("tolvex30.exe to tolvex.exe File Copy Error: 70\r\nPermission denied"),
                  ExitStatus::kDisk);
    EXPECT_EQ(Judge(Box("tolvex.exe backup File Copy Error: 70\r\nPermission denied")).meaning,
              Meaning::kNews);
}

TEST(KnownQuestions, BothErrorsOfAnInstallAreToldApart) {
    EXPECT_EQ(Judge(Box("Install Error!\r\n\r\nCannot install the updated Tolvex program while\r\n"
                        "Tolvex is still running."))
                  .meaning,
              Meaning::kStillRunning);
    ExpectFailure(
        Box("Install Error!\r\n\r\nThe update file 'tolvex30.exe' is not the one that the "
            "maker of q-tolvex signed.\r\ntolvex.exe not updated."),
        ExitStatus::kNotSigned);
}

TEST(KnownQuestions, ThoseOfTheWayBackAreToldApart) {
    EXPECT_EQ(Judge(Box("Go back from version 3.00.12.05 to version 3.00.11.00?")).meaning,
              Meaning::kWantsToGoBack);
    const std::string start = "Go Back Error!\r\n\r\n";
    EXPECT_EQ(Judge(Box(start + "There is no earlier version of tolvex to go back to.")).meaning,
              Meaning::kNews);
    EXPECT_EQ(Judge(Box(start + "Cannot go back while Tolvex is still running.")).meaning,
              Meaning::kStillRunning);
    ExpectFailure(Box(start + "tolvex.exe backup File Copy Error: 61\r\nDisk full"),
                  ExitStatus::kDisk);
}

TEST(KnownQuestions, AnUnknownOneIsUnknown) {
    EXPECT_EQ(Judge(Box("Would you like a newsletter?")).meaning, Meaning::kUnknown);
    EXPECT_EQ(Judge({"frmOther", "", ""}).meaning, Meaning::kUnknown);
}

TEST(SafeAnswerTo, AQuestionIsNo) {
    EXPECT_EQ(SafeAnswer({kMessageBox, "", "", msgbox::kYesNo + msgbox::kQuestion}),
              MsgBoxAnswer::kNo);
}

TEST(SafeAnswerTo, AMessageIsOk) {
    EXPECT_EQ(SafeAnswer({kMessageBox, "", "", msgbox::kCritical}), MsgBoxAnswer::kOk);
}

}  // namespace
}  // namespace swiftpatch
