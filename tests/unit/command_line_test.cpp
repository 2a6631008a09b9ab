#include "unattended/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace swiftpatch {
namespace {

TEST(CommandLine, WithoutArgumentsIsAnOrdinaryRun) {
    const CommandLine line = ReadCommandLine({});
    EXPECT_FALSE(line.check || line.closeProgram || line.json || line.quiet || line.help ||
                 line.version);
    EXPECT_EQ(line.fault, "");
}

TEST(CommandLine, TakesEveryOptionInAnyOrder) {
    const CommandLine line =
        ReadCommandLine({"--version", "--quiet", "--json", "--help", "--close-program", "--check"});
    EXPECT_TRUE(line.check && line.closeProgram && line.json && line.quiet && line.help &&
                line.version);
    EXPECT_EQ(line.fault, "");
}

TEST(CommandLine, NamesTheFirstUnknownArgument) {
    EXPECT_EQ(ReadCommandLine({"--check", "--chekc", "--other"}).fault,
              "unknown argument: --chekc");
    EXPECT_EQ(ReadCommandLine({"tolvex.exe"}).fault, "unknown argument: tolvex.exe");
}

TEST(CommandLine, KnowsOptionsOnlyAsTheyAreWritten) {
    for (const char* argument :
         {"-check", "/check", "--CHECK", "--check=1", "--chec", " --check"}) {
        EXPECT_EQ(ReadCommandLine({argument}).fault, std::string("unknown argument: ") + argument);
    }
}

TEST(CommandLine, AnEmptyArgumentIsUnknown) {
    EXPECT_EQ(ReadCommandLine({""}).fault, "unknown argument: \"\"");
}

TEST(CommandLine, ACheckGoesNowhere) {
    EXPECT_EQ(ReadCommandLine({"--check", "--go-back"}).fault,
              "--check and --go-back do not go together");
    EXPECT_EQ(ReadCommandLine({"--go-back", "--close-program"}).fault, "");
}

TEST(CommandLine, HelpNamesEveryOptionAndEveryStatus) {
    for (const char* part : {"--check ",   "--close-program ",
                             "--go-back ", "--json ",
                             "--quiet ",   "--help ",
                             "--version ", " 0 ",
                             " 10 ",       " 11 ",
                             "20 ",        " 21 ",
                             " 22 ",       " 30 ",
                             "31 ",        " 40 ",
                             " 50 ",       " 60 ",
                             "64 ",        " 70 "}) {
        EXPECT_THAT(HelpText(), testing::HasSubstr(part));
    }
}

}  // namespace
}  // namespace swiftpatch
