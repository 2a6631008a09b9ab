#include "unattended/ending.h"

#include <gtest/gtest.h>

namespace swiftpatch {
namespace {

TEST(RunEnding, OfAnOrdinaryRunHasNothingToDo) {
    EXPECT_EQ(StatusOf({.finished = true}), ExitStatus::kNothingToDo);
}

TEST(RunEnding, ThatNobodyUnderstandsIsAnInternalError) {
    EXPECT_EQ(StatusOf({}), ExitStatus::kInternal);
}

TEST(RunEnding, AReplacedProgramCountsMoreThanAFailureOnTheWay) {
    EXPECT_EQ(StatusOf({.programReplaced = true, .failure = ExitStatus::kTimedOut}),
              ExitStatus::kInstalled);
}

TEST(RunEnding, AFailureCountsMoreThanAWindowThatSaysThatAllIsWell) {
    EXPECT_EQ(StatusOf({.failure = ExitStatus::kDisk, .finished = true}), ExitStatus::kDisk);
}

TEST(RunEnding, ARequestThatFailedWithoutAWordIsNoSuccess) {
    EXPECT_EQ(StatusOf({.failedRequest = 35754, .finished = true}), ExitStatus::kNoConnection);
    EXPECT_EQ(StatusOf({.failedRequest = 35758, .finished = true}), ExitStatus::kTimedOut);
}

TEST(RunEnding, WhatACheckFoundCountsMoreThanAFailureOnTheWay) {
    EXPECT_EQ(StatusOf({.updateReady = true, .failure = ExitStatus::kBadServer}),
              ExitStatus::kReady);
}

TEST(RunEnding, BesideAnotherUpdaterSaysSoWhateverThatOneDid) {
    EXPECT_EQ(StatusOf({.otherUpdater = true, .programReplaced = true}), ExitStatus::kOtherUpdater);
}

}  // namespace
}  // namespace swiftpatch
