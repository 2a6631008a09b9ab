// A monkey at the updater, while runs of all kinds go on.
#include "e2e/monkey.h"

#include <iostream>
#include <random>

#include "e2e/hurry.h"
#include "e2e/options.h"
#include "e2e/resources.h"
#include "e2e/update_run.h"
#include "fixtures/animation.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kLongestAnswer{5000};
constexpr milliseconds kLongestEnd{60000};

class MonkeyRun : public UpdateRun {
protected:
    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

    void PrepareServer() {
        Reply build = BuildReply("3.0.12.5");
        build.bytesPerSecond = 20000U + random_() % 400000U;
        switch (Below(8)) {
            case 0:
                build = NotFound();
                break;
            case 1:
                build.end = BodyEnd::kReset;
                build.endAfter = random_() % build.body.Size();
                break;
            case 2:
                build.end = BodyEnd::kStall;
                build.endAfter = random_() % build.body.Size();
                break;
            case 3:
                build.omitContentLength = true;
                break;
            case 4:
                build.delay = milliseconds(Below(2000));
                break;
            default:
                break;
        }
        Publish(build);
    }

    void PrepareFolder() {
        for (const auto& [name, contents] : folder_->Take()) {
            if (name != "swiftpatch.exe") {
                std::filesystem::remove(folder_->File(name));
            }
        }
        folder_->WriteSettings(ServerFolder(), "LogFileName=error.log\r\nInstallAtOnce=" +
                                                   std::to_string(Below(3) == 0 ? 1 : 0) + "\r\n");
        folder_->Write("error.log", "one\r\ntwo\r\n");
        if (Below(4) != 0) {
            folder_->Write("filecopy.avi", fixtures::MakeAnimation(2));
        }
        if (Below(8) != 0) {
            Install(Below(3) == 0 ? "3.0.12.5" : "3.0.11.0");
        }
        if (Below(2) == 0) {
            Stage(Below(4) == 0 ? "none" : "3.0.12.5", kServerTime + std::chrono::hours(24));
        }
        LetMainProgramRecord();
    }

    /// One run of the updater with a monkey at it, which is then let go to its end.
    void LiveThroughARun() {
        PrepareServer();
        PrepareFolder();
        updater_.emplace(folder_->Updater());
        // On the splash window nearly everything ends the run.
        if (Below(8) != 0) {
            HurryIntoCheck(*updater_);
        }
        const SteadyTime end = std::chrono::steady_clock::now() + milliseconds(500 + Below(12000));
        Monkey monkey(updater_->Running(), random_);
        while (std::chrono::steady_clock::now() < end && updater_->Running().Running()) {
            if (Below(10) == 0) {
                SkipWaits();
            }
            monkey.Act();
            ExpectAnswer();
            std::this_thread::sleep_for(milliseconds(Below(20)));
        }
        EndRun();
    }

    /// So that not most of the time goes by in waits.
    void SkipWaits() {
        constexpr WPARAM kTimers[] = {209, 107};
        for (const HWND window : VisibleWindowsOf(updater_->Running().Id())) {
            PostMessageW(window, WM_TIMER, kTimers[Below(2)], 0);
        }
    }

    void ExpectAnswer() {
        const milliseconds time = Monkey::AnswerTime(updater_->Running(), 2 * kLongestAnswer);
        slowest_ = std::max(slowest_, time);
        if (time > kLongestAnswer) {
            ADD_FAILURE() << "no answer for " << time.count() << " ms; " << updater_->Describe();
        }
    }

    /// Answers everything and closes every window until the run is over.
    void EndRun() {
        const auto over = [this] {
            if (!AnswerWhateverAsks(*updater_)) {
                for (const HWND window : VisibleWindowsOf(updater_->Running().Id())) {
                    PostMessageW(window, WM_CLOSE, 0, 0);
                }
            }
            std::this_thread::sleep_for(milliseconds(50));
            return !updater_->Running().Running();
        };
        if (!WaitUntil(over, kLongestEnd)) {
            ADD_FAILURE() << "the run cannot be ended; " << updater_->Describe();
            updater_->Running().Kill();
        }
        EXPECT_EQ(updater_->Running().ExitCode(), 0U) << "not an orderly end";
        updater_.reset();
        ExpectNoProcessLeft();
        ++runs_;
    }

    void ExpectNoProcessLeft() const {
        EXPECT_EQ(RunningPrograms(L"swiftpatch.exe"), 0) << "a process is left";
        // The main program that the run started, as it should; it records itself a bit later.
        const auto gone = [this] {
            EndStartedMainProgram();
            return RunningPrograms(L"tolvex.exe") == 0;
        };
        EXPECT_TRUE(WaitUntil(gone, kLongestEnd)) << "the main program is left";
    }

    std::mt19937 random_{TestOptions().seed};
    milliseconds slowest_{0};
    int runs_ = 0;
};

TEST_F(MonkeyRun, NeitherCrashesNorHangsNorStays) {
    const unsigned seed = TestOptions().seed;
    const SteadyTime end = std::chrono::steady_clock::now() + seconds(TestOptions().monkeySeconds);
    while (std::chrono::steady_clock::now() < end && !HasFailure()) {
        LiveThroughARun();
    }
    std::cout << "seed " << seed << ", " << runs_ << " runs, slowest answer " << slowest_.count()
              << " ms\n";
    for (const auto& [what, count] : Monkey::Deeds()) {
        std::cout << "  " << what << ": " << count << "\n";
    }
}

class Leaks : public UpdateRun {
protected:
    /// Goes on to a stopped run with an error log.
    void StartToFailure() {
        const DeadPort dead;
        folder_->WriteSettings(dead.Host() + "/upd/", "LogFileName=error.log\r\n");
        folder_->Write("error.log", std::string(100000, 'x') + "\r\n");
        updater_.emplace(folder_->Updater());
        HurryIntoCheck(*updater_);
        updater_->AwaitWindow(kFailure, seconds(60));
        updater_->Press(kFailureExit);
        updater_->AwaitEnabled(kCmdClose, seconds(10));
    }

    void VisitTheLog() const {
        updater_->Press(kCmdReadLog);
        updater_->AwaitWindow(L"frmLog", seconds(10));
        updater_->Press({L"frmLog", 402, "cmdMain"});
        updater_->AwaitWindow(kMain, seconds(10));
        updater_->AwaitNoWindow(L"frmLog", seconds(10));
    }

    /// Goes on to the failure of the download, and past it to the offer to try again.
    void AwaitFailure() const {
        // The button comes before the dialog; Close can be pressed after it.
        const auto offered = [this] {
            return !AnswerWhateverAsks(*updater_) && updater_->Visible(kCmdRetry) &&
                   updater_->Enabled(kCmdClose);
        };
        Await("the offer to try again", offered, seconds(60));
        updater_->AwaitEnabled(kCmdRetry, seconds(10));
    }

    void RetryAndFail() const {
        updater_->Press(kCmdRetry);
        Await(
            "the next attempt", [this] { return !updater_->Visible(kCmdRetry); }, seconds(10));
        AwaitFailure();
    }

    /// What the program holds in a moment of rest may be a little more or less of what the system
    /// keeps for itself, but does not grow with the number of visits: one window of ours that stays
    /// each time is three, with what is in it.
    static bool NoMore(const Resources& after, const Resources& before) {
        return after.gdi <= before.gdi && after.user <= before.user &&
               after.handles <= before.handles + 2 && after.windows <= before.windows + 4 &&
               after.threads <= before.threads + 2 && after.files <= before.files + 2;
    }

    /// The system's own workers come with the work, and go after some seconds without any.
    void ExpectBackTo(const Resources& before) const {
        Resources after;
        const auto back = [&] {
            after = ResourcesOf(updater_->Running());
            return NoMore(after, before);
        };
        const bool same = WaitUntil(back, seconds(20));
        std::cout << "before: " << before.Text() << "\nafter:  " << after.Text() << "\n";
        EXPECT_TRUE(same) << "more is held than before";
    }
};

TEST_F(Leaks, VisitsToTheLogLeaveNothingBehind) {
    StartToFailure();
    for (int visit = 0; visit < 3; ++visit) {
        VisitTheLog();
    }
    const Resources before = ResourcesOf(updater_->Running());
    for (int visit = 0; visit < 15; ++visit) {
        VisitTheLog();
    }
    ExpectBackTo(before);
    CloseQuietly();
}

TEST_F(Leaks, FailedDownloadsLeaveNothingBehind) {
    Reply broken = BuildReply("3.0.12.5");
    broken.end = BodyEnd::kReset;
    broken.endAfter = 100000;
    Publish(broken);
    Install("3.0.11.0");
    updater_.emplace(folder_->Updater());
    HurryIntoCheck(*updater_);
    AwaitFailure();
    RetryAndFail();
    const Resources before = ResourcesOf(updater_->Running());
    for (int attempt = 0; attempt < 3; ++attempt) {
        RetryAndFail();
    }
    ExpectBackTo(before);
    CloseQuietly();
}

}  // namespace
}  // namespace swiftpatch::e2e
