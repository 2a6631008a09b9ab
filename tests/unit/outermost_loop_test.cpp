#include "runtime/internal/outermost_loop.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "runtime/events.h"
#include "runtime/headless/world.h"
#include "runtime/runtime_error.h"

namespace swiftpatch {
namespace {

class OutermostLoop : public testing::Test {
protected:
    OutermostLoop() { reported.clear(); }

    static void Report(const RuntimeError& error) {
        reported += std::to_string(error.Number()) + " " + error.Description() + "\n";
    }
    static void RunTo(void (*end)()) {
        RunOutermost(end, Report);
        EXPECT_TRUE(RunIsOver());
    }

    headless::World world;
    static inline std::string reported;
};

TEST_F(OutermostLoop, ThatReturnsIsTheEndOfTheRun) {
    RunTo([] {});
    EXPECT_EQ(reported, "");
}

TEST_F(OutermostLoop, EndOfTheProgramIsNoError) {
    RunTo([] { throw EndProgram(); });
    EXPECT_EQ(reported, "");
}

TEST_F(OutermostLoop, ErrorThatNobodyTrapsIsReported) {
    RunTo([] { throw RuntimeError(75, "Path/File access error"); });
    EXPECT_EQ(reported, "75 Path/File access error\n");
}

TEST_F(OutermostLoop, ErrorsOfTheStandardLibraryHaveNumbersToo) {
    RunTo([] { throw std::bad_alloc(); });
    RunTo([] { throw std::length_error("too long"); });
    EXPECT_EQ(reported, "7 Out of memory\n51 Internal error\n");
}

}  // namespace
}  // namespace swiftpatch
