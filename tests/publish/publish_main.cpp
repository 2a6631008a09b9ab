#include "publish/publish_main.h"

#include <gtest/gtest.h>

#include <charconv>
#include <iostream>
#include <string_view>

namespace publish {
namespace {

int kills = 12;

}  // namespace

int Kills() { return kills; }

}  // namespace publish

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    for (int i = 1; i < count; ++i) {
        constexpr std::string_view kOption = "--kills=";
        const std::string_view argument = arguments[i];
        const char* const end = argument.data() + argument.size();
        if (!argument.starts_with(kOption) ||
            std::from_chars(argument.data() + kOption.size(), end, publish::kills).ptr != end) {
            std::cerr << "usage: publish_tests [--kills=N] [--gtest_...]\n";
            return 2;
        }
    }
    return RUN_ALL_TESTS();
}
