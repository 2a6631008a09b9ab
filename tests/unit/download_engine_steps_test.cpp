#include "unit/download_engine_support.h"

namespace swiftpatch {
namespace {

class DownloadEngineSteps : public EngineTest {
protected:
    DownloadEngineSteps() { InstallSameVersion(); }

    /// What a chunk of the new build does, from its percentage to the yield behind it.
    static std::string Chunk(const std::string& percentage, const std::string& size) {
        return Joined({Set("lblStatus.Caption", percentage + " % download completed"),
                       "lblStatus.BackColor = -2147483633", "ProgressBar1.Value = " + percentage,
                       "lblStatus.Refresh", "DoEventsPaced", "Put #1 " + size, "DoEventsPaced"});
    }

    /// The lines from the start of the body on, without those of the wait for it.
    std::string Body() const {
        std::vector<std::string> lines;
        for (const std::string& line : world.trace.Lines()) {
            if (line == "cmdClose.Enabled = False" || !lines.empty()) {
                lines.push_back(line);
            }
        }
        std::erase(lines, "DoEventsWaiting");
        return Joined(lines);
    }

    static constexpr const char* kText = "downloading the\r\nlatest q-tolvex version.";
    static constexpr const char* kOpen = "Open C:\\Tolvex\\tolvex30.exe #1";
};

TEST_F(DownloadEngineSteps, OfTwoChunksAndTheEmptyOne) {
    DownloadBuild(2048, NewBuild(2048));
    EXPECT_EQ(Body(), Joined({"cmdClose.Enabled = False",
                              Set("lblAnimationMsg.Caption", kText),
                              kOpen,
                              Chunk("50", "1024"),
                              Chunk("100", "1024"),
                              Chunk("100", "0"),
                              "Flush #1",
                              Set("lblStatus.Caption", "100 % completed"),
                              "lblStatus.BackColor = -2147483633",
                              "ProgressBar1.Value = 100",
                              "Close #1",
                              "DoEvents",
                              "ProgressBar1.Value = 0",
                              Set("lblStatus.Caption", ""),
                              AnimationStarted(),
                              Set("lblTolvexVersion.Caption",
                                  "q-tolvex Version available to install: 3.00.12.05"),
                              "lblTolvexVersion.Visible = True",
                              "frmSwiftPatch.MousePointer = 0",
                              "ProgressBar1.Value = 0",
                              "cmdClose.Enabled = True",
                              Set("lblStatus.Caption", "No update is required at this time."),
                              "DoEvents",
                              Set("frmSwiftPatch.Caption",
                                  "Swift Patch - Download No Update Required - All Files Current"),
                              "DoEvents",
                              "Animation1.Stop",
                              "fraMessages.Visible = False",
                              "ProgressBar1.Visible = False"}));
    EXPECT_EQ(Content("tolvex30.exe"), NewBuild(2048));
    EXPECT_EQ(Window().downloadMode, DownloadMode::kNone);
}

TEST_F(DownloadEngineSteps, DeleteTheStagedBuildBeforeTheFileIsOpened) {
    world.AddFile("tolvex30.exe", std::string(5000, 'o'));
    DownloadBuild(2048, NewBuild(2048));
    EXPECT_TRUE(Body().starts_with(
        Joined({"cmdClose.Enabled = False", Set("lblAnimationMsg.Caption", kText),
                "Kill C:\\Tolvex\\tolvex30.exe", kOpen})))
        << Body();
    EXPECT_EQ(Content("tolvex30.exe"), NewBuild(2048));
}

TEST_F(DownloadEngineSteps, OfTheAnimationSleepAHundredMillisecondsAChunk) {
    world.disk.Remove(world.PathOf("filecopy.avi"));
    Download(DownloadMode::kAnimation, 2048, headless::FileReply(std::string(2048, 'a')));
    const auto slow = [](const std::string& percentage, const std::string& size) {
        std::string steps = Chunk(percentage, size);
        return steps.replace(steps.find("Put"), 0, "Sleep 100\n");
    };
    EXPECT_EQ(Body(),
              Joined({"cmdClose.Enabled = False",
                      Set("lblAnimationMsg.Caption", "downloading ....\r\nmissing AVI file."),
                      "Open C:\\Tolvex\\filecopy.avi #1", slow("50", "1024"), slow("100", "1024"),
                      slow("100", "0"), "Flush #1", Set("lblStatus.Caption", "100 % completed"),
                      "lblStatus.BackColor = -2147483633", "ProgressBar1.Value = 100", "Close #1",
                      "DoEvents", "tmrCheckVersion.Enabled = False", "cmdClose.Enabled = True"}));
    EXPECT_EQ(Content("filecopy.avi"), std::string(2048, 'a'));
}

TEST_F(DownloadEngineSteps, OfTheBuildNeverSleep) {
    DownloadBuild(5000, NewBuild(5000));
    EXPECT_TRUE(world.trace.StartingWith("Sleep").empty());
}

TEST_F(DownloadEngineSteps, CloseIsDisabledForAsLongAsTheBodyComesIn) {
    std::vector<bool> enabled;
    Window().cmdClose.Enabled = true;
    world.When([this] { return world.trace.Contains("Put #1 1024"); },
               [&] { enabled.push_back(Window().cmdClose.Enabled); });
    DownloadBuild(5000, NewBuild(5000));
    EXPECT_EQ(enabled, std::vector<bool>{false});
    EXPECT_TRUE(Window().cmdClose.Enabled);
}

TEST_F(DownloadEngineSteps, OfAnUnknownModeEndAtTheFirstWrite) {
    ExpectReport("Internet Connection Timeout", BrokenTransfer("52\r\nBad file name or number"));
    Download(DownloadMode::kNone, 2048, headless::FileReply(NewBuild(2048)));
    EXPECT_TRUE(world.trace.StartingWith("Open").empty());
    EXPECT_EQ(Percentages(), std::vector<std::string>{"50"});
    EXPECT_EQ(Content("tolvex30.exe"), "(no such file)");
    EXPECT_FALSE(world.trace.Contains(Set("lblAnimationMsg.Caption", kText)));
}

}  // namespace
}  // namespace swiftpatch
