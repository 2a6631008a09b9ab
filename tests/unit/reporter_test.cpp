#include "unattended/reporter.h"

#include <gtest/gtest.h>

namespace swiftpatch {
namespace {

class ReporterTest : public testing::Test {
protected:
    Reporter Make(Reporter::Form form, bool quiet = false, bool terminal = false) {
        return {{[this](std::string_view text) { written_ += text; },
                 [](std::string_view text) {
                     std::u16string wide;
                     for (const char letter : text) {
                         wide += static_cast<char16_t>(static_cast<unsigned char>(letter));
                     }
                     return wide;
                 },
                 terminal},
                form,
                quiet};
    }

    std::string written_;
};

constexpr auto kText = Reporter::Form::kText;
constexpr auto kJson = Reporter::Form::kJson;

TEST_F(ReporterTest, WritesAStepInOneLine) {
    EXPECT_TRUE(Make(kText).Step("message", "downloading the\r\nlatest  version. "));
    EXPECT_EQ(written_, "downloading the latest version.\r\n");
}

TEST_F(ReporterTest, SaysATextOfAPartOnce) {
    Reporter reporter = Make(kText);
    reporter.Step("status", "Update disabled.");
    EXPECT_FALSE(reporter.Step("status", "Update disabled."));
    EXPECT_FALSE(reporter.Step("status", ""));
    reporter.Step("message", "Update disabled.");
    EXPECT_EQ(written_, "Update disabled.\r\nUpdate disabled.\r\n");
}

TEST_F(ReporterTest, LeavesPercentagesToTheProgress) {
    Reporter reporter = Make(kText);
    EXPECT_FALSE(reporter.Step("status", "42 % download completed"));
    EXPECT_FALSE(reporter.Step("status", "-3 % download completed"));
    EXPECT_TRUE(reporter.Step("status", "Version 3 %"));
}

TEST_F(ReporterTest, ShowsProgressOnATerminalInOneMovingLine) {
    Reporter reporter = Make(kText, false, true);
    reporter.Progress(1);
    reporter.Progress(2);
    reporter.Step("status", "done");
    EXPECT_EQ(written_, "\r1 %\r2 %\r\ndone\r\n");
}

TEST_F(ReporterTest, WritesNoProgressIntoAFile) {
    Make(kText).Progress(1);
    EXPECT_EQ(written_, "");
}

TEST_F(ReporterTest, TellsAQuestionAndItsAnswer) {
    Make(kText).Asked({kMessageBox, "Confirm Exit", "Are you\r\n\r\nsure?"}, "Yes", true);
    EXPECT_EQ(written_, "[Confirm Exit] Are you sure? -> Yes\r\n");
}

TEST_F(ReporterTest, InQuietWritesTheEndAlone) {
    Reporter reporter = Make(kText, true, true);
    reporter.Step("status", "done");
    reporter.Progress(50);
    reporter.Note("something");
    reporter.Asked({}, "OK", false);
    EXPECT_EQ(written_, "");
    reporter.End(ExitStatus::kInstalled);
    EXPECT_EQ(written_, "Status 10: The build was installed.\r\n");
}

TEST_F(ReporterTest, InQuietJsonWritesTheEndAlone) {
    Reporter reporter = Make(kJson, true);
    reporter.Step("status", "done");
    reporter.Waiting(3);
    EXPECT_EQ(written_, "");
    reporter.End(ExitStatus::kDisk);
    EXPECT_TRUE(
        written_.starts_with("{\"event\":\"end\",\"status\":50,\"name\":\"disk\",\"text\":\""));
}

TEST_F(ReporterTest, WritesEveryKindOfJsonLine) {
    Reporter reporter = Make(kJson);
    reporter.Step("status", "done");
    reporter.Progress(7);
    reporter.Request("HEAD", "127.0.0.1/a.exe");
    reporter.Asked({"frmRunning", "No Connection", "Try again"}, "OK", true);
    reporter.Note("closing");
    reporter.Waiting(3);
    EXPECT_EQ(written_,
              "{\"event\":\"step\",\"part\":\"status\",\"text\":\"done\"}\r\n"
              "{\"event\":\"progress\",\"percent\":7}\r\n"
              "{\"event\":\"request\",\"method\":\"HEAD\",\"address\":\"127.0.0.1/a.exe\"}\r\n"
              "{\"event\":\"question\",\"form\":\"frmRunning\",\"title\":\"No Connection\","
              "\"text\":\"Try again\",\"answer\":\"OK\",\"known\":true}\r\n"
              "{\"event\":\"note\",\"text\":\"closing\"}\r\n"
              "{\"event\":\"waiting\",\"seconds\":3}\r\n");
}

TEST_F(ReporterTest, WritesJsonInLettersOfAscii) {
    Make(kJson).Step("c", "a\"b\\c\xE4\x01");
    EXPECT_EQ(written_,
              "{\"event\":\"step\",\"part\":\"c\",\"text\":\"a\\\"b\\\\c\\u00e4\\u0001\"}\r\n");
}

}  // namespace
}  // namespace swiftpatch
