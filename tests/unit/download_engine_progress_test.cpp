#include "unit/download_engine_support.h"

namespace swiftpatch {
namespace {

class DownloadEngineProgress : public EngineTest {
protected:
    DownloadEngineProgress() { InstallSameVersion(); }

    std::vector<std::string> Shown(std::int32_t expectedSize, std::size_t size) {
        DownloadBuild(expectedSize, NewBuild(size));
        return Percentages();
    }

    using Texts = std::vector<std::string>;
};

TEST_F(DownloadEngineProgress, CountsOneLessAChunkAndOneForTheEmptyOne) {
    EXPECT_EQ(Shown(2048, 2048), (Texts{"50", "100", "100"}));
}

TEST_F(DownloadEngineProgress, Counts1023ForAFullChunk) {
    EXPECT_EQ(Shown(204, 2048), (Texts{"501", "1003", "1003"}));
}

TEST_F(DownloadEngineProgress, CountsTheLastPartialChunkByOneLess) {
    EXPECT_EQ(Shown(100, 51), (Texts{"50", "51"}));
}

TEST_F(DownloadEngineProgress, RoundsHalvesToEven) {
    EXPECT_EQ(Shown(204600, 5120), (Texts{"0", "1", "2", "2", "2", "3"}));
}

TEST_F(DownloadEngineProgress, ThatEndsAtAHundredIsShownAsCompleted) {
    DownloadBuild(2048, NewBuild(2048));
    EXPECT_EQ(world.trace.Count(Set("lblStatus.Caption", "100 % completed")), 1U);
    EXPECT_TRUE(InOrder(
        Steps(), {Set("lblStatus.Caption", "100 % completed"), "lblStatus.BackColor = -2147483633",
                  "ProgressBar1.Value = 100", "Close #1"}));
}

TEST_F(DownloadEngineProgress, OfALongerBodyKeepsTheBarAtAHundred) {
    EXPECT_EQ(Shown(1024, 3072), (Texts{"100", "200", "300", "300"}));
    std::vector<std::string> bar = world.trace.StartingWith("ProgressBar1.Value");
    EXPECT_EQ(Joined(bar), Joined({"ProgressBar1.Value = 100", "ProgressBar1.Value = 100",
                                   "ProgressBar1.Value = 100", "ProgressBar1.Value = 100",
                                   "ProgressBar1.Value = 100", "ProgressBar1.Value = 0",
                                   "ProgressBar1.Value = 0"}));
    EXPECT_EQ(world.trace.Count(Set("lblStatus.Caption", "100 % completed")), 1U);
    EXPECT_EQ(Content("tolvex30.exe"), NewBuild(3072));
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "No update is required at this time.");
}

TEST_F(DownloadEngineProgress, OfAShorterBodyIsFollowedUpAllTheSame) {
    EXPECT_EQ(Shown(10240, 1024), (Texts{"10", "10"}));
    EXPECT_FALSE(world.trace.Contains(Set("lblStatus.Caption", "100 % completed")));
    EXPECT_EQ(Content("tolvex30.exe"), NewBuild(1024));
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "No update is required at this time.");
}

TEST_F(DownloadEngineProgress, OfAnEmptyBodyWritesAnEmptyFile) {
    world.user.Answer("The file is probably corrupt.");
    ExpectReport("Internet Connection Timeout", BrokenTransfer("9\r\nSubscript out of range"));
    Download(DownloadMode::kBuild, 2048, headless::FileReply(""));
    EXPECT_EQ(Percentages(), Texts{"0"});
    EXPECT_TRUE(InOrder(Steps(), {"Open C:\\Tolvex\\tolvex30.exe #1", "Put #1 0", "Close #1",
                                  "Kill C:\\Tolvex\\tolvex30.exe"}));
}

TEST_F(DownloadEngineProgress, Of32767PerCentIsTheLargest) {
    // 32 full chunks count 32736, the 32 bytes behind them 31, the empty chunk one too many.
    ExpectReport("Internet Connection Timeout", BrokenTransfer("6\r\nOverflow"));
    const Texts shown = Shown(100, 32 * 1024 + 32);
    ASSERT_EQ(shown.size(), 33U);
    EXPECT_EQ(shown.back(), "32767");
}

TEST_F(DownloadEngineProgress, Over32767PerCentIsAnOverflow) {
    ExpectReport("Internet Connection Timeout", BrokenTransfer("6\r\nOverflow"));
    DownloadBuild(1, NewBuild(2048));
    EXPECT_EQ(Percentages(), Texts{});
    EXPECT_EQ(Content("tolvex30.exe"), "");
}

TEST_F(DownloadEngineProgress, ComesInUnevenBlocksFromTheServerAllTheSame) {
    headless::Reply reply = headless::FileReply(NewBuild(2048));
    reply.blockSize = 700;
    Download(DownloadMode::kBuild, 2048, reply);
    EXPECT_EQ(Percentages(), (Texts{"50", "100", "100"}));
    EXPECT_EQ(Content("tolvex30.exe"), NewBuild(2048));
}

}  // namespace
}  // namespace swiftpatch
