#include "net/wait.h"

#include "runtime/clock.h"
#include "runtime/events.h"
#include "runtime/runtime_error.h"
#include "unit/program_test.h"

namespace swiftpatch {
namespace {

class WaitSecondsTest : public ProgramTest {
protected:
    void StartAt(const DateParts& time, std::int64_t milliseconds) {
        world.SetLocalTime(MakeDateTime(time));
        world.localMilliseconds += milliseconds;
    }

    std::string TimeOfDay() {
        const DateParts now = PartsOf(Now());
        return std::to_string(now.hour) + ":" + std::to_string(now.minute) + ":" +
               std::to_string(now.second) + "." + std::to_string(world.localMilliseconds % 1000);
    }
};

TEST_F(WaitSecondsTest, EndsInTheFirstWholeSecondAfterTheDeadline) {
    StartAt({2026, 3, 10, 10, 0, 0}, 400);
    WaitSeconds(3);
    EXPECT_EQ(TimeOfDay(), "10:0:4.0");
}

TEST_F(WaitSecondsTest, LastsASecondMoreWhenItStartsOnTheSecond) {
    StartAt({2026, 3, 10, 10, 0, 0}, 0);
    WaitSeconds(1);
    EXPECT_EQ(TimeOfDay(), "10:0:2.0");
}

TEST_F(WaitSecondsTest, OverflowOfTheSecondsCarriesIntoMinutesAndHours) {
    StartAt({2026, 3, 10, 10, 59, 58}, 0);
    WaitSeconds(3);
    EXPECT_EQ(TimeOfDay(), "11:0:2.0");
}

TEST_F(WaitSecondsTest, ZeroSecondsEndInTheNextSecond) {
    StartAt({2026, 3, 10, 10, 0, 0}, 250);
    WaitSeconds(0);
    EXPECT_EQ(TimeOfDay(), "10:0:1.0");
}

TEST_F(WaitSecondsTest, YieldsAllTheWhile) {
    StartAt({2026, 3, 10, 10, 0, 0}, 0);
    std::vector<std::int64_t> seen;
    for (const std::int64_t due : {500, 1500, 2500}) {
        world.After(due, [this, &seen] { seen.push_back(world.uptime); });
    }
    WaitSeconds(2);
    EXPECT_EQ(seen, (std::vector<std::int64_t>{500, 1500, 2500}));
    EXPECT_EQ(world.trace.Lines(), std::vector<std::string>{"DoEventsResting"});
}

TEST_F(WaitSecondsTest, DeadlineInTheNextDayIsNotReachedInTheMorning) {
    StartAt({2026, 3, 10, 23, 59, 55}, 0);
    world.After(60000, [] { EndRunAtNextPump(); });
    EXPECT_THROW(WaitSeconds(11), EndProgram);
    EXPECT_EQ(TimeOfDay(), "0:0:55.0");
}

TEST_F(WaitSecondsTest, DeadlineInTheNextDayIsNotReachedTheNextEveningEither) {
    StartAt({2026, 3, 10, 23, 59, 58}, 0);
    world.clockStep = 1000;
    world.After(std::int64_t{2} * 24 * 60 * 60 * 1000, [] { EndRunAtNextPump(); });
    EXPECT_THROW(WaitSeconds(2), EndProgram);
}

TEST_F(WaitSecondsTest, DeadlineJustBeforeMidnightIsReached) {
    StartAt({2026, 3, 10, 23, 59, 55}, 0);
    world.After(20000, [] { EndRunAtNextPump(); });
    WaitSeconds(3);
    EXPECT_EQ(TimeOfDay(), "23:59:59.0");
}

TEST_F(WaitSecondsTest, EndsWithTheRunWhenTheWindowIsClosed) {
    world.Dispatch([this] { Window().Show(); });
    Window().tmrCheckVersion.Enabled = false;
    Window().cmdClose.Enabled = true;
    const std::int64_t start = world.uptime;
    world.After(700, [this] { world.Close(Window()); });
    bool wentOn = false;
    world.Dispatch([&] {
        WaitSeconds(30);
        wentOn = true;
    });
    EXPECT_FALSE(wentOn);
    EXPECT_TRUE(world.RunOver());
    EXPECT_LT(world.uptime - start, 710);
}

}  // namespace
}  // namespace swiftpatch
