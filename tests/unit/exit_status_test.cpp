#include "unattended/exit_status.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace swiftpatch {
namespace {

TEST(ExitStatusOf, AServerErrorTellsTheLineTheServerAndTheTimeApart) {
    EXPECT_EQ(StatusOfError(35754), ExitStatus::kNoConnection);
    EXPECT_EQ(StatusOfError(35752), ExitStatus::kBadServer);
    EXPECT_EQ(StatusOfError(35756), ExitStatus::kBadServer);
    EXPECT_EQ(StatusOfError(35758), ExitStatus::kTimedOut);
}

TEST(ExitStatusOf, WhatCameAndCannotBeReadIsTheServers) {
    for (const int number : {5, 6, 9, 13}) {
        EXPECT_EQ(StatusOfError(number), ExitStatus::kBadServer) << number;
    }
}

TEST(ExitStatusOf, EveryErrorOfAFileIsTheDisks) {
    for (const int number : {52, 53, 54, 55, 57, 61, 62, 67, 70, 71, 75, 76}) {
        EXPECT_EQ(StatusOfError(number), ExitStatus::kDisk) << number;
    }
}

TEST(ExitStatusOf, AnyOtherNumberIsAnInternalError) {
    for (const int number : {0, 4, 7, 14, 51, 77, 438, 35751, 35764, -2147467259}) {
        EXPECT_EQ(StatusOfError(number), ExitStatus::kInternal) << number;
    }
}

TEST(ExitStatusNames, AreOneForEachStatus) {
    std::set<std::string> names;
    for (const int status : {0, 10, 11, 20, 21, 22, 30, 31, 40, 50, 60, 64, 70}) {
        names.insert(NameOf(static_cast<ExitStatus>(status)));
        EXPECT_STRNE(TextOf(static_cast<ExitStatus>(status)), "");
    }
    EXPECT_EQ(names.size(), 13U);
    EXPECT_STREQ(NameOf(ExitStatus::kNotSigned), "not-signed");
}

}  // namespace
}  // namespace swiftpatch
