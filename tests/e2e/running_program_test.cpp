#include "e2e/options.h"
#include "e2e/text.h"
#include "e2e/update_run.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kSoon{10000};

constexpr char kTitle[] = "q-Tolvex.exe Detected Running - Close Program Automatically ";
constexpr char kQuestion[] =
    "The program q-Tolvex.exe is running and must be closed\r\n"
    "to perform an update.\r\n"
    "\r\n"
    "You can still download the latest version without installing it, however you will need to "
    "close q-Tolvex.exe to install the update.\r\n"
    "\r\n"
    "Should I close the program q-Tolvex.exe automatically?";
constexpr char kInstallError[] =
    "Install Error!\r\n\r\nCannot install the updated Tolvex program while\r\n"
    "Tolvex is still running.";

/// The place in the store of the user's settings where a main program records its window. Taken
/// away at the end.
class RecordedHandle {
public:
    explicit RecordedHandle(HWND window) {
        const std::string digits = std::to_string(reinterpret_cast<LONG_PTR>(window));
        RegCreateKeyExA(HKEY_CURRENT_USER,
                        "Software\\VB and VBA Program Settings\\Closefrm\\Defaults", 0, nullptr, 0,
                        KEY_SET_VALUE, nullptr, &key_, nullptr);
        RegSetValueExA(key_, kName, 0, REG_SZ, reinterpret_cast<const BYTE*>(digits.c_str()),
                       static_cast<DWORD>(digits.size() + 1));
    }
    ~RecordedHandle() {
        RegDeleteValueA(key_, kName);
        RegCloseKey(key_);
    }
    RecordedHandle(const RecordedHandle&) = delete;
    RecordedHandle& operator=(const RecordedHandle&) = delete;

private:
    static constexpr char kName[] = "Last Handle";
    HKEY key_ = nullptr;
};

class RunningProgram : public UpdateRun {
protected:
    /// An earlier download waits to be installed.
    void Prepare() {
        Publish("3.0.12.5");
        Install("3.0.11.0");
        Stage("3.0.12.5", kServerTime + std::chrono::hours(24));
    }

    /// A main program outside the application folder, so that its file is not in the way.
    MainProgram StartElsewhere(const std::wstring& arguments) {
        other_.emplace(TestOptions().scratch / "other", TestOptions().updater);
        other_->Write("tolvex.exe", Build("3.0.11.0"));
        return {other_->File("tolvex.exe"), L"--record " + arguments};
    }

    std::vector<std::string> EventsElsewhere() const {
        std::vector<std::string> events = RecordIn(other_->Path());
        events.erase(events.begin());  // Its start.
        return events;
    }

    void AwaitInstalled() {
        updater_->AwaitText(kLblAnimationMsg, "You have installed the latest version of q-tolvex.",
                            kSoon);
    }

    std::optional<AppFolder> other_;
};

TEST_F(RunningProgram, YesGoesOnWithTheProgramThatWasToldToClose) {
    Prepare();
    const MainProgram running(folder_->File("tolvex.exe"), L"--record");
    Start();
    AnswerBox(kQuestion, IDYES, kTitle);
    EXPECT_TRUE(running.Running().WaitForEnd(kSoon));
    AwaitOffer();
    updater_->Press(kCmdInstall);
    AnswerBackupBox("3.00.11.00");
    AwaitInstalled();
    CloseQuietly();
    // The close command comes before the question, and closes the program at once.
    EXPECT_EQ(RecordIn(folder_->Path()),
              (std::vector<std::string>{"started 3.0.11.0 " + PathText(folder_->File("tolvex.exe")),
                                        "close command FFFFF060", "close message"}));
    ExpectFiles({"changed started.txt", "created tolvex.3.00.11.00.exe", "changed tolvex.exe"});
    EXPECT_EQ(folder_->Read("tolvex.exe"), Build("3.0.12.5"));
}

TEST_F(RunningProgram, NoLeavesItRunningAndKeepsTheInstallFromStarting) {
    Prepare();
    const MainProgram running = StartElsewhere(L"--refuse");
    Start();
    AnswerBox(kQuestion, IDNO, kTitle);
    AwaitOffer();
    updater_->Press(kCmdInstall);
    AnswerBox(kQuestion, IDNO, kTitle);
    AnswerBox(kInstallError, IDOK);
    EXPECT_EQ(updater_->Text(kLblStatus), kOffer);
    CloseQuietly();
    EXPECT_EQ(EventsElsewhere(),
              (std::vector<std::string>{"close command FFFFF060", "close command FFFFF060"}));
    EXPECT_TRUE(running.Running().Running());
    ExpectFiles({});
}

TEST_F(RunningProgram, RefusalCountsAsStillRunning) {
    Prepare();
    const MainProgram running = StartElsewhere(L"--refuse");
    Start();
    AnswerBox(kQuestion, IDYES, kTitle);
    AwaitOffer();
    updater_->Press(kCmdInstall);
    AnswerBox(kQuestion, IDYES, kTitle);
    AnswerBox(kInstallError, IDOK);
    CloseQuietly();
    EXPECT_EQ(EventsElsewhere(),
              (std::vector<std::string>{"close command FFFFF060", "close message",
                                        "close command FFFFF060", "close message"}));
    EXPECT_TRUE(running.Running().Running());
    ExpectFiles({});
}

/// What of the updater's window waits to be painted: the window itself as 0, its controls by their
/// ids. Without the check box, which has the focus when a box has gone: it is painted anew, in its
/// place, when another program takes the focus from it.
std::vector<int> WaitingToBePainted(HWND window) {
    const auto waits = [](HWND one) { return GetUpdateRect(one, nullptr, FALSE) != 0; };
    std::vector<int> waiting;
    if (waits(window)) {
        waiting.push_back(0);
    }
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        const int id = GetDlgCtrlID(child);
        if (IsWindowVisible(child) && id != kChkRunTolvex.id && waits(child)) {
            waiting.push_back(id);
        }
    }
    return waiting;
}

TEST_F(RunningProgram, WindowIsPaintedWholeWhileTheMainProgramAsksItsUser) {
    Prepare();
    const MainProgram running = StartElsewhere(L"--ask");
    Start();
    AnswerBox(kQuestion, IDYES, kTitle);
    HWND question = nullptr;
    Await(
        "the main program's question",
        [&] { return (question = FindWindowW(L"#32770", L"Unsaved")) != nullptr; }, kSoon);
    EXPECT_EQ(WaitingToBePainted(updater_->Window(L"frmSwiftPatch")), std::vector<int>{});
    PostMessageW(question, WM_COMMAND, IDOK, 0);
    AwaitOffer();
    CloseQuietly();
    ExpectFiles({});
}

// Of two windows that only their titles tell of, the one whose handle was recorded is meant, not
// the one that is found first.
TEST_F(RunningProgram, ThatRecordedItsHandleIsTheOneThatIsToldToClose) {
    Prepare();
    const MainProgram recorded = StartElsewhere(L"--refuse --other-class");
    const AppFolder third(TestOptions().scratch / "third", TestOptions().updater);
    third.Write("tolvex.exe", Build("3.0.11.0"));
    const MainProgram above(third.File("tolvex.exe"), L"--record --refuse --other-class");
    const RecordedHandle handle(recorded.Window());
    Start();
    AnswerBox(kQuestion, IDYES, kTitle);
    AwaitOffer();
    CloseQuietly();
    EXPECT_EQ(EventsElsewhere(), std::vector<std::string>{"close message"});
    EXPECT_EQ(RecordIn(third.Path()).size(), 1U) << "the other one was told to close";
    ExpectFiles({});
}

// A program that handles the request with 0 counts as closed, even when it stays; its file then
// cannot be replaced.
TEST_F(RunningProgram, RequestThatIsIgnoredCountsAsClosed) {
    Prepare();
    const MainProgram running(folder_->File("tolvex.exe"), L"--ignore");
    Start();
    AnswerBox(kQuestion, IDYES, kTitle);
    AwaitOffer();
    updater_->Press(kCmdInstall);
    AnswerBox(kQuestion, IDYES, kTitle);
    AnswerBackupBox("3.00.11.00");
    AnswerBox("tolvex30.exe to tolvex.exe File Copy Error: 70\r\nPermission denied", IDOK);
    AwaitInstalled();
    CloseQuietly();
    EXPECT_TRUE(running.Running().Running());
    ExpectFiles({"created tolvex.3.00.11.00.exe"});
}

}  // namespace
}  // namespace swiftpatch::e2e
