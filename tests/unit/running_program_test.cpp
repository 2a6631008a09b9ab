#include "install/running_program.h"

#include <algorithm>
#include <cctype>
#include <string>

#include "runtime/runtime_error.h"
#include "unit/program_test.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

constexpr const char* kProgram = "q-Tolvex.exe";
constexpr const char* kQuestion = "Detected Running";
constexpr const char* kSetting = "Closefrm\\Defaults\\Last Handle";
constexpr const char* kTopMost = "SetWindowPos 65552 -1 0 0 0 0 3";
constexpr const char* kBox =
    "MsgBox 36 \"q-Tolvex.exe Detected Running - Close Program Automatically \" "
    "\"The program q-Tolvex.exe is running and must be closed\\r\\n"
    "to perform an update.\\r\\n"
    "\\r\\n"
    "You can still download the latest version without installing it, however you will need to "
    "close q-Tolvex.exe to install the update.\\r\\n"
    "\\r\\n"
    "Should I close the program q-Tolvex.exe automatically?\" -> ";

std::string InCapitals(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
    return text;
}

class RunningProgram : public ProgramTest {
protected:
    RunningProgram() {
        world.Dispatch([this] { Window().Show(); });
        Window().tmrCheckVersion.Enabled = false;
        world.trace.Clear();
    }

    void AddWindow(WindowHandle handle, const std::string& className, const std::string& title,
                   WindowHandle owner = 0, std::int32_t answerToClose = 0) {
        world.desktop.push_back(
            {handle, className, title, owner, false, [answerToClose](std::uint32_t message) {
                 return message == 0x10 ? answerToClose : 0;
             }});
    }

    bool Detect() { return GetWindowHandles(Window()); }

    bool DetectAndAnswer(MsgBoxAnswer answer) {
        world.user.Answer(kQuestion, answer);
        return Detect();
    }

    /// The messages that were sent.
    std::vector<std::string> Sent() const { return world.trace.StartingWith("SendMessage"); }
};

TEST_F(RunningProgram, NothingFoundAsksNothingAndChangesNothing) {
    AddWindow(300, "Notepad", "readme.txt");
    EXPECT_FALSE(Detect());
    EXPECT_THAT(world.trace.Lines(), ElementsAre("EnumWindows"));
}

TEST_F(RunningProgram, HandlesStandFromIndexOneOnInTheirOrder) {
    AddWindow(300, "a", "a");
    AddWindow(200, "b", "b");
    Detect();
    EXPECT_THAT(WindowHandles, ElementsAre(0, 300, 200));
    world.desktop = {};
    Detect();
    EXPECT_THAT(WindowHandles, ElementsAre(0));
}

TEST_F(RunningProgram, IndexZeroIsNeverLookedAt) {
    AddWindow(0, kProgram, kProgram);
    world.desktop.back().child = true;  // Not enumerated; a look at handle 0 would find it.
    EXPECT_FALSE(Detect());
    EXPECT_TRUE(Sent().empty());
}

TEST_F(RunningProgram, EnumerationCallbackAppendsAndGoesOn) {
    WindowHandles = {0, 5};
    EXPECT_TRUE(EnumWindowsProc(6, 0));
    EXPECT_THAT(WindowHandles, ElementsAre(0, 5, 6));
}

TEST_F(RunningProgram, ClassMatchIsSentTheCloseCommandBeforeTheQuestion) {
    world.machine.topMostResult = 5;
    AddWindow(300, kProgram, "q-Tolvex.exe - main");
    EXPECT_FALSE(DetectAndAnswer(MsgBoxAnswer::kYes));
    EXPECT_THAT(world.trace.Lines(),
                ElementsAre("EnumWindows", "SendMessage 300 0x112 0xfffff060 0", kTopMost,
                            "DoEvents", std::string(kBox) + "Yes", "SendMessage 300 0x10 0x0 0",
                            "DoEventsResting", "DoEvents"));
    EXPECT_EQ(Window().topMost, 5);
}

TEST_F(RunningProgram, AnswerNoSendsNoCloseAndReportsItRunning) {
    AddWindow(300, kProgram, kProgram);
    EXPECT_TRUE(DetectAndAnswer(MsgBoxAnswer::kNo));
    EXPECT_THAT(world.trace.Lines(),
                ElementsAre("EnumWindows", "SendMessage 300 0x112 0xfffff060 0", kTopMost,
                            "DoEvents", std::string(kBox) + "No"));
}

TEST_F(RunningProgram, AnswerYesTakesAboutTwoSeconds) {
    AddWindow(300, kProgram, kProgram);
    const std::int64_t start = world.uptime;
    EXPECT_FALSE(DetectAndAnswer(MsgBoxAnswer::kYes));
    EXPECT_GT(world.uptime - start, 2000);
    EXPECT_LE(world.uptime - start, 3000);
}

TEST_F(RunningProgram, RefusedCloseIsReportedAsRunningAfterTheWait) {
    AddWindow(300, kProgram, kProgram, 0, 1);
    const std::int64_t start = world.uptime;
    EXPECT_TRUE(DetectAndAnswer(MsgBoxAnswer::kYes));
    EXPECT_GT(world.uptime - start, 2000);
}

TEST_F(RunningProgram, AnyResultButZeroIsARefusal) {
    AddWindow(300, kProgram, kProgram, 0, -1);
    EXPECT_TRUE(DetectAndAnswer(MsgBoxAnswer::kYes));
}

TEST_F(RunningProgram, QuestionIsAskedAlthoughTheCloseCommandWorked) {
    AddWindow(300, kProgram, kProgram);
    world.desktop[0].answer = [this](std::uint32_t) {
        world.desktop[0].title = "";
        return 0;
    };
    EXPECT_TRUE(DetectAndAnswer(MsgBoxAnswer::kNo));
}

TEST_F(RunningProgram, ResultOfTheCloseCommandIsIgnored) {
    AddWindow(300, kProgram, kProgram);
    world.desktop[0].answer = [](std::uint32_t message) { return message == 0x112 ? 1 : 0; };
    EXPECT_FALSE(DetectAndAnswer(MsgBoxAnswer::kYes));
}

TEST_F(RunningProgram, EveryClassMatchIsSentTheCommandAndTheFirstOwnerIsClosed) {
    AddWindow(300, kProgram, "child", 400);
    AddWindow(310, kProgram, "q-Tolvex.exe two");
    AddWindow(400, "Frame", "q-Tolvex.exe one");
    EXPECT_FALSE(DetectAndAnswer(MsgBoxAnswer::kYes));
    EXPECT_THAT(Sent(),
                ElementsAre("SendMessage 300 0x112 0xfffff060 0",
                            "SendMessage 310 0x112 0xfffff060 0", "SendMessage 400 0x10 0x0 0"));
}

TEST_F(RunningProgram, WalkEndsAtTheTopmostOwnerAndTheCommandGoesToTheMatch) {
    AddWindow(300, kProgram, "tool", 400);
    AddWindow(400, "Middle", "middle", 500);
    AddWindow(500, "Top", "The q-Tolvex.exe window");
    EXPECT_FALSE(DetectAndAnswer(MsgBoxAnswer::kYes));
    EXPECT_THAT(Sent(),
                ElementsAre("SendMessage 300 0x112 0xfffff060 0", "SendMessage 500 0x10 0x0 0"));
}

TEST_F(RunningProgram, ClassMatchWhoseOwnersTitleLacksTheTextIsSentNothing) {
    AddWindow(300, kProgram, "tool", 400);
    AddWindow(400, "Frame", "Something else");
    EXPECT_FALSE(Detect());
    EXPECT_TRUE(Sent().empty());
}

TEST_F(RunningProgram, ClassMatchWithoutOwnersTextIsLeftToTheTitlePass) {
    AddWindow(300, kProgram, kProgram, 400);
    AddWindow(400, "Frame", "Something else");
    EXPECT_FALSE(DetectAndAnswer(MsgBoxAnswer::kYes));
    EXPECT_THAT(Sent(), ElementsAre("SendMessage 300 0x10 0x0 0"));
}

TEST_F(RunningProgram, ClassIsMatchedExactlyAndTheTitleWithRegardToCase) {
    AddWindow(300, InCapitals(kProgram), InCapitals(kProgram));
    AddWindow(310, std::string(kProgram) + "2", InCapitals(kProgram));
    EXPECT_FALSE(Detect());
    EXPECT_TRUE(Sent().empty());
}

TEST_F(RunningProgram, TitleAloneIsFoundAndNothingIsSentBeforeTheAnswer) {
    AddWindow(300, "Explorer", "C:\\Programs\\q-Tolvex.exe - properties");
    AddWindow(310, "Editor", kProgram);
    EXPECT_TRUE(DetectAndAnswer(MsgBoxAnswer::kNo));
    EXPECT_TRUE(Sent().empty());
    EXPECT_FALSE(DetectAndAnswer(MsgBoxAnswer::kYes));
    EXPECT_THAT(Sent(), ElementsAre("SendMessage 300 0x10 0x0 0"));
}

TEST_F(RunningProgram, TitleIsReadUpTo127Characters) {
    constexpr std::size_t kRead = 127;
    const std::size_t length = std::string(kProgram).size();
    AddWindow(300, "Editor", std::string(kRead - length, '.') + kProgram);
    EXPECT_TRUE(DetectAndAnswer(MsgBoxAnswer::kNo));
    world.desktop = {};
    AddWindow(300, "Editor", std::string(kRead - length + 1, '.') + kProgram);
    EXPECT_FALSE(Detect());
}

TEST_F(RunningProgram, RememberedWindowIsClosedThoughAnotherTitleMatchesToo) {
    world.machine.settings[kSetting] = "700";
    AddWindow(300, "Editor", kProgram);
    AddWindow(700, "Other", "q-Tolvex.exe");
    EXPECT_FALSE(DetectAndAnswer(MsgBoxAnswer::kYes));
    EXPECT_THAT(Sent(), ElementsAre("SendMessage 700 0x10 0x0 0"));
}

TEST_F(RunningProgram, RememberedWindowNeedNotBeATopLevelOne) {
    world.machine.settings[kSetting] = "700";
    AddWindow(700, "Other", "q-Tolvex.exe");
    world.desktop.back().child = true;
    EXPECT_TRUE(DetectAndAnswer(MsgBoxAnswer::kNo));
}

TEST_F(RunningProgram, ClassMatchGoesBeforeTheRememberedWindow) {
    world.machine.settings[kSetting] = "700";
    AddWindow(700, "Other", "q-Tolvex.exe");
    AddWindow(300, kProgram, kProgram);
    EXPECT_FALSE(DetectAndAnswer(MsgBoxAnswer::kYes));
    EXPECT_EQ(Sent().back(), "SendMessage 300 0x10 0x0 0");
}

TEST_F(RunningProgram, StaleRememberedHandleIsDiscarded) {
    world.machine.settings[kSetting] = "700";
    AddWindow(700, "Other", "Something else");
    EXPECT_FALSE(Detect());
    AddWindow(300, "Editor", kProgram);
    EXPECT_FALSE(DetectAndAnswer(MsgBoxAnswer::kYes));
    EXPECT_THAT(Sent(), ElementsAre("SendMessage 300 0x10 0x0 0"));
}

TEST_F(RunningProgram, RememberedHandleOfNoWindowIsDiscarded) {
    world.machine.settings[kSetting] = "700";
    EXPECT_FALSE(Detect());
}

TEST_F(RunningProgram, SettingThatIsNoNumberCountsAsNone) {
    for (const std::string text : {"", "abc", "7x", "0"}) {
        world.machine.settings[kSetting] = text;
        EXPECT_FALSE(Detect()) << text;
    }
}

TEST_F(RunningProgram, SettingIsRoundedToAWholeNumber) {
    AddWindow(700, "Other", kProgram);
    world.desktop.back().child = true;
    for (const std::string text : {"700.5", "699.5", " 700 "}) {
        world.machine.settings[kSetting] = text;
        EXPECT_TRUE(DetectAndAnswer(MsgBoxAnswer::kNo)) << text;
    }
}

TEST_F(RunningProgram, SettingTooLargeIsAnErrorThatIsNotTrappedHere) {
    world.machine.settings[kSetting] = "2147483648";
    try {
        Detect();
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), error_number::kOverflow);
    }
}

TEST_F(RunningProgram, WindowClosedWhileTheQuestionIsOpenEndsTheRun) {
    AddWindow(300, kProgram, kProgram);
    world.user.Answer(kQuestion, MsgBoxAnswer::kYes, [this] { Window().UnloadUnasked(); });
    bool wentOn = false;
    world.Dispatch([&] {
        Detect();
        wentOn = true;
    });
    EXPECT_FALSE(wentOn);
    EXPECT_TRUE(world.RunOver());
    EXPECT_THAT(Sent(), ElementsAre("SendMessage 300 0x112 0xfffff060 0"));
}

}  // namespace
}  // namespace swiftpatch
