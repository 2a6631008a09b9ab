#include "publish_check/version.h"

#include <gtest/gtest.h>

#include "publish_check/sample_server.h"

namespace publish_check {
namespace {

TEST(VersionText, UpToFourNumbers) {
    EXPECT_EQ(ParseVersion("3.0.12.5"), (Version{3, 0, 12, 5}));
    EXPECT_EQ(ParseVersion("3.00.12.05"), (Version{3, 0, 12, 5}));
    EXPECT_EQ(ParseVersion("2.9"), (Version{2, 9, 0, 0}));
    EXPECT_EQ(ParseVersion("65535"), (Version{65535, 0, 0, 0}));
}

TEST(VersionText, AnythingElseIsRefused) {
    for (const char* text : {"", ".", "3.", ".3", "3..1", "3.0.12.5.1", "3,0", "v3", "3.0 ", "-1",
                             "65536", "3.0.12.5."}) {
        EXPECT_FALSE(ParseVersion(text)) << text;
    }
}

TEST(VersionText, IsShownAsTheUpdaterShowsIt) {
    EXPECT_EQ(ShownText({3, 0, 12, 5}), "3.00.12.05");
    EXPECT_EQ(ShownText({3, 1, 0, 123}), "3.01.00.123");
    EXPECT_EQ(ShownText({3, 0, 40000, 1}), "3.00.-25536.01");
    EXPECT_EQ(PlainText({3, 0, 40000, 1}), "3.0.40000.1");
}

TEST(VersionText, PartsAbove32767AreNegativeToAnUpdater) {
    EXPECT_FALSE(HasNegativePart({3, 0, 32767, 0}));
    EXPECT_TRUE(HasNegativePart({3, 0, 32768, 0}));
}

TEST(VersionBlock, IsReadFromAnExecutable) {
    const auto versions = ReadFileVersions(SampleBuild(Version{3, 0, 40000, 5}, 100000));
    ASSERT_TRUE(versions);
    EXPECT_EQ(versions->product, (Version{3, 0, 40000, 5}));
    EXPECT_EQ(versions->file, (Version{9, 8, 7, 6}));
}

TEST(VersionBlock, OtherFilesHaveNone) {
    EXPECT_FALSE(ReadFileVersions(""));
    EXPECT_FALSE(ReadFileVersions("MZ"));
    EXPECT_FALSE(ReadFileVersions(std::string(100000, 'x')));
    EXPECT_FALSE(ReadFileVersions(SampleBuild(std::nullopt, 100000)));
}

TEST(VersionBlock, CutFilesAreKnownByTheirSections) {
    const std::string whole = SampleBuild(kPublishedVersion, 100000);
    EXPECT_FALSE(IsCutOff(whole));
    EXPECT_TRUE(IsCutOff(whole.substr(0, whole.size() - 1)));
    EXPECT_FALSE(IsCutOff(std::string(100000, 'x')));
}

// The sanitizers look on.
TEST(VersionBlock, FilesThatAreCutAreReadSafely) {
    const std::string whole = SampleBuild(kPublishedVersion, 0x400);
    int readable = 0;
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        readable += ReadFileVersions(whole.substr(0, size)) ? 1 : 0;
    }
    constexpr int kAfterTheBlock = 0x400 - (0x200 + 0x58 + 92) + 1;
    EXPECT_EQ(readable, kAfterTheBlock);
}

TEST(VersionBlock, FilesWithAChangedByteAreReadSafely) {
    const std::string whole = SampleBuild(kPublishedVersion, 0x400);
    int readable = 0;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const char byte : {'\x01', '\x7F', '\xFF'}) {
            std::string changed = whole;
            changed[at] = byte;
            readable += ReadFileVersions(changed) ? 1 : 0;
        }
    }
    EXPECT_GT(readable, 0);
}

}  // namespace
}  // namespace publish_check
