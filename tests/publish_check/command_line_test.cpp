#include "publish_check/command_line.h"

#include <gtest/gtest.h>

#include <sstream>

#include "publish_check/run.h"

namespace publish_check {
namespace {

TEST(CommandLine, OneFolderAndManyVersions) {
    const CommandLine line =
        ReadCommandLine({"--installed", "2.9", "3.0.11.0", "files", "--json", "--installed=none"});
    EXPECT_EQ(line.target, "files");
    EXPECT_TRUE(line.json);
    ASSERT_EQ(line.installed.size(), 3U);
    EXPECT_EQ(line.installed[0].version, (Version{2, 9, 0, 0}));
    EXPECT_EQ(line.installed[1].version, (Version{3, 0, 11, 0}));
    EXPECT_FALSE(line.installed[2].version);
}

TEST(CommandLine, AfterItsVersionsComesTheFolder) {
    EXPECT_EQ(ReadCommandLine({"--installed", "2.9", "files"}).target, "files");
}

TEST(CommandLine, WhatIsWrongIsSaid) {
    const auto wrong = [](const std::vector<std::string>& arguments) {
        try {
            ReadCommandLine(arguments);
        } catch (const UsageError& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    EXPECT_NE(wrong({}).find("is missing"), std::string::npos);
    EXPECT_NE(wrong({"a", "b"}).find("more than one folder"), std::string::npos);
    EXPECT_NE(wrong({"a", "--installed"}).find("a version is missing"), std::string::npos);
    EXPECT_NE(wrong({"a", "--installed", "new"}).find("\"new\" is no version"), std::string::npos);
    EXPECT_NE(wrong({"a", "--jsn"}).find("unknown option --jsn"), std::string::npos);
    EXPECT_NE(wrong({""}).find("empty"), std::string::npos);
}

struct Ended {
    int status;
    std::string out;
    std::string errors;
};

Ended RunWith(const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream errors;
    const int status = RunPublishCheck(arguments, out, errors);
    return {status, out.str(), errors.str()};
}

TEST(Run, HelpIsPrinted) {
    const Ended ended = RunWith({"--help"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.out, HelpText());
}

TEST(Run, BadUsageEndsWith2) {
    const Ended ended = RunWith({"--nonsense"});
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.out, "");
    EXPECT_NE(ended.errors.find("usage: publish-check"), std::string::npos);
}

TEST(Run, WhatIsNeitherFolderNorAddressEndsWith2) {
    for (const char* target : {"no-such-folder", "./no/such.folder", "/no/such/folder"}) {
        const Ended ended = RunWith({target});
        EXPECT_EQ(ended.status, 2);
        EXPECT_NE(ended.errors.find("neither a folder here nor an address"), std::string::npos)
            << ended.errors;
    }
}

TEST(Run, AnotherProtocolEndsWith2) {
    const Ended ended = RunWith({"ftp://updates.example.com/download/"});
    EXPECT_EQ(ended.status, 2);
    EXPECT_NE(ended.errors.find("http and https only"), std::string::npos) << ended.errors;
}

}  // namespace
}  // namespace publish_check
