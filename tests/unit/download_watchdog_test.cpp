#include "net/download_watchdog.h"

#include <limits>

#include "runtime/runtime_error.h"
#include "unit/program_test.h"

namespace swiftpatch {
namespace {

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

void TickTimes(DownloadWatchdog& watchdog, int times, std::int32_t size) {
    for (int i = 0; i < times; ++i) {
        watchdog.Tick(size);
    }
}

TEST(DownloadWatchdog, CountsEachTickOfAKnownSize) {
    DownloadWatchdog watchdog;
    TickTimes(watchdog, 30, 500000);
    EXPECT_EQ(watchdog.tickCount, 30);
    EXPECT_EQ(watchdog.lastSize, 500000);
}

TEST(DownloadWatchdog, UnknownSizeSetsTheCountBackAndKeepsTheLastSize) {
    DownloadWatchdog watchdog;
    TickTimes(watchdog, 30, 500000);
    watchdog.Tick(-1);
    EXPECT_EQ(watchdog.tickCount, 0);
    EXPECT_EQ(watchdog.lastSize, 500000);
    TickTimes(watchdog, 5, -1);
    EXPECT_EQ(watchdog.tickCount, 0);
    EXPECT_EQ(watchdog.lastSize, 500000);
}

TEST(DownloadWatchdog, SizeZeroFromTheStartCounts) {
    DownloadWatchdog watchdog;
    TickTimes(watchdog, 4, 0);
    EXPECT_EQ(watchdog.lastSize, 0);
    EXPECT_EQ(watchdog.tickCount, 4);
}

TEST(DownloadWatchdog, SizeZeroAfterAKnownOneSetsTheCountBack) {
    DownloadWatchdog watchdog;
    TickTimes(watchdog, 4, 500000);
    watchdog.Tick(0);
    EXPECT_EQ(watchdog.tickCount, 0);
}

TEST(DownloadWatchdog, NewSizeDoesNotSetTheCountBack) {
    DownloadWatchdog watchdog;
    TickTimes(watchdog, 3, 500000);
    watchdog.Tick(600000);
    EXPECT_EQ(watchdog.lastSize, 600000);
    EXPECT_EQ(watchdog.tickCount, 4);
}

TEST(DownloadWatchdog, CountGoesOnWhenTheSizeComesBack) {
    DownloadWatchdog watchdog;
    TickTimes(watchdog, 3, 500000);
    watchdog.Tick(-1);
    TickTimes(watchdog, 2, 500000);
    EXPECT_EQ(watchdog.tickCount, 2);
}

TEST(DownloadWatchdog, CountReachesTheLargestNumberAndOverflowsBeyond) {
    DownloadWatchdog watchdog;
    watchdog.tickCount = kLargest - 1;
    watchdog.lastSize = 500000;
    watchdog.Tick(500000);
    EXPECT_EQ(watchdog.tickCount, kLargest);
    try {
        watchdog.Tick(500000);
        FAIL() << "no overflow";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), error_number::kOverflow);
    }
    EXPECT_EQ(watchdog.tickCount, kLargest);
}

TEST(DownloadWatchdog, SetBackFromTheLargestNumberIsNoOverflow) {
    DownloadWatchdog watchdog;
    watchdog.tickCount = kLargest;
    watchdog.lastSize = 500000;
    watchdog.Tick(-1);
    EXPECT_EQ(watchdog.tickCount, 0);
}

class DownloadWatchdogTimer : public ProgramTest {
protected:
    DownloadWatchdogTimer() {
        world.Dispatch([this] { Window().Show(); });
        Window().tmrCheckVersion.Enabled = false;
        Window().expectedSize = 500000;
    }
};

TEST_F(DownloadWatchdogTimer, TicksOnceASecondWhileEnabled) {
    Window().tmrDownloadTimeout.Enabled = true;
    world.PumpFor(30001);
    EXPECT_EQ(Window().watchdog.tickCount, 30);
    Window().tmrDownloadTimeout.Enabled = false;
    world.PumpFor(5000);
    EXPECT_EQ(Window().watchdog.tickCount, 30);
}

TEST_F(DownloadWatchdogTimer, MeasuresAndNeverActs) {
    headless::Reply reply;
    reply.states = {};
    reply.silent = true;
    world.network.Answer("GET http://host/x", reply);
    Window().Inet1.Execute("host/x", "GET");
    Window().watchdog.tickCount = 1000000;
    world.trace.Clear();
    Window().tmrDownloadTimeout_Timer();
    EXPECT_TRUE(world.trace.Lines().empty());
    EXPECT_TRUE(Window().Inet1.StillExecuting());
}

TEST_F(DownloadWatchdogTimer, OverflowIsReportedAndTheRunGoesOn) {
    Window().watchdog.tickCount = kLargest;
    Window().watchdog.lastSize = 500000;
    world.user.Answer(
        "Error Number: 6\r\n\r\nOverflow\r\n\r\n"
        "Source: [frmSwiftPatch] tmrDownloadTimeout_Timer()");
    world.Dispatch([this] { Window().tmrDownloadTimeout_Timer(); });
    EXPECT_FALSE(world.RunOver());
}

}  // namespace
}  // namespace swiftpatch
