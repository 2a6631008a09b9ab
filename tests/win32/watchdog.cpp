#include "win32/watchdog.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace swiftpatch::real_system {
namespace {

std::atomic<int> testsEnded = 0;

class Counter : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo& /*test*/) override { ++testsEnded; }
};

[[noreturn]] void Watch(int seconds) {
    int ended = testsEnded;
    for (int waited = 0;; ++waited) {
        std::this_thread::sleep_for(std::chrono::seconds(1));
        const int now = testsEnded;
        if (now != ended) {
            ended = now;
            waited = 0;
        } else if (waited >= seconds) {
            const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
            std::fprintf(stderr, "%s.%s takes too long\n", test ? test->test_suite_name() : "?",
                         test ? test->name() : "?");
            std::_Exit(3);
        }
    }
}

}  // namespace

void WatchTests(int seconds) {
    // The listeners belong to the test framework from here on.
    testing::UnitTest::GetInstance()->listeners().Append(new Counter);
    std::thread(Watch, seconds).detach();
}

}  // namespace swiftpatch::real_system
