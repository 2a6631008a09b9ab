// Uploads to a "server" that is a second folder, by the shell's own commands.
#include "publish/upload.h"

#include <gmock/gmock.h>

#include "publish/published_folder.h"

namespace publish {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(UploadCommand, WordsAreQuotedForTheShell) {
    EXPECT_EQ(UploadCommand("copy {file} to:{name}", "/a b/it's.exe"),
              "copy '/a b/it'\\''s.exe' to:'it'\\''s.exe'");
}

class UploadTest : public PublishedFolder {
protected:
    UploadTest() { fs::create_directory(server); }

    /// The command writes a list of what it was given.
    std::string Copying(const std::string& before = "true") const {
        return before + " && echo {name} >>'" + List().string() + "' && cp -p {file} '" +
               server.string() + "/'{name}";
    }
    /// Fails from the nth file on; what was asked for may have been done all the same.
    std::string FailingFrom(const std::string& name, bool arrives) const {
        return Copying(arrives ? "true" : "[ {name} != " + name + " ]") +
               " && [ {name} != " + name + " ]";
    }
    fs::path List() const { return work / "list"; }
    std::string OnServer(const std::string& name) const { return ReadBytes(server / name); }

    fs::path server = work / "the server";
    std::string key = MakeKey("work");
};

TEST_F(UploadTest, SignatureGoesBeforeTheBuild) {
    ASSERT_EQ(Publish(kNew, {"--key", key, "--upload", Copying()}), 0) << output;
    EXPECT_EQ(ReadBytes(List()), "tolvex30.exe.minisig\ntolvex30.exe\n");
    EXPECT_EQ(OnServer("tolvex30.exe"), BuildOf(kNew));
    EXPECT_EQ(OnServer("tolvex30.exe.minisig"), Read("tolvex30.exe.minisig"));
    EXPECT_EQ(fs::last_write_time(server / "tolvex30.exe"),
              fs::last_write_time(folder / "tolvex30.exe"));
    EXPECT_THAT(Names(), ElementsAre("tolvex30.exe", "tolvex30.exe.minisig"));
}

TEST_F(UploadTest, AnimationGoesFirstWhereNothingIsSigned) {
    ASSERT_EQ(Publish(kNew, {"--upload", Copying()}), 0) << output;
    EXPECT_EQ(ReadBytes(List()), "filecopy.avi\ntolvex30.exe\n");
}

TEST_F(UploadTest, FailureLeavesTheCopyAsItWas) {
    ASSERT_EQ(Publish(kOld, {"--key", key, "--upload", Copying()}), 0) << output;
    const auto before = Snapshot();
    EXPECT_EQ(Publish(kNew, {"--key", key, "--upload", FailingFrom("tolvex30.exe.minisig", false)}),
              1);
    EXPECT_THAT(output, HasSubstr("the command to upload tolvex30.exe.minisig with ended with the "
                                  "status 1"));
    auto after = Snapshot();
    EXPECT_EQ(after.erase(".publish") + after.erase(".publish/uploaded.minisig"), 2U);
    EXPECT_EQ(after, before);
    EXPECT_TRUE(
        Fits(OnServer("tolvex30.exe.minisig"), OnServer("tolvex30.exe"), publicKeys["work"]));
}

/// Nobody knows then which of the two builds the server has.
TEST_F(UploadTest, AfterABrokenOneEachBuildThatTheServerMayHaveIsSigned) {
    for (const bool arrives : {false, true}) {
        fs::remove_all(folder);
        fs::create_directory(folder);
        ASSERT_EQ(Publish(kOld, {"--key", key, "--upload", Copying()}), 0) << output;
        ASSERT_EQ(Publish(kNew, {"--key", key, "--upload", FailingFrom("tolvex30.exe", arrives)}),
                  1);
        EXPECT_EQ(OnServer("tolvex30.exe"), BuildOf(arrives ? kNew : kOld));
        EXPECT_TRUE(
            Fits(OnServer("tolvex30.exe.minisig"), OnServer("tolvex30.exe"), publicKeys["work"]));
        // The next call breaks off between its two files.
        ASSERT_EQ(Publish(kNext, {"--key", key, "--upload", FailingFrom("tolvex30.exe", false)}),
                  1);
        EXPECT_TRUE(
            Fits(OnServer("tolvex30.exe.minisig"), OnServer("tolvex30.exe"), publicKeys["work"]));
        EXPECT_TRUE(Fits(OnServer("tolvex30.exe.minisig"), BuildOf(kNext), publicKeys["work"]));
        ASSERT_EQ(Publish(kNext, {"--key", key, "--upload", Copying()}), 0) << output;
        EXPECT_EQ(OnServer("tolvex30.exe"), BuildOf(kNext));
        EXPECT_FALSE(fs::exists(folder / ".publish"));
    }
}

TEST_F(UploadTest, BrokenOneIsRememberedUntilAnUploadSucceeds) {
    ASSERT_EQ(Publish(kOld, {"--key", key, "--upload", Copying()}), 0) << output;
    ASSERT_EQ(Publish(kNew, {"--key", key, "--upload", FailingFrom("tolvex30.exe", true)}), 1);
    EXPECT_THAT(output, HasSubstr("the server can have either build. Call publish again."));
    ASSERT_EQ(Publish(kNext, {"--key", key}), 0) << output;
    ASSERT_EQ(Publish(kNext, {"--key", key, "--upload", FailingFrom("tolvex30.exe", false)}), 1);
    EXPECT_TRUE(
        Fits(OnServer("tolvex30.exe.minisig"), OnServer("tolvex30.exe"), publicKeys["work"]));
}

TEST_F(UploadTest, TriesDoNotPushOutTheSignatureOfWhatIsThere) {
    ASSERT_EQ(Publish(kOld, {"--key", key, "--upload", Copying()}), 0) << output;
    ASSERT_EQ(Publish(kNew, {"--key", key, "--upload", FailingFrom("tolvex30.exe", true)}), 1);
    for (int i = 0; i < 14; ++i) {
        ASSERT_EQ(Publish(kNext, {"--key", key, "--upload", FailingFrom("tolvex30.exe", false)}),
                  1);
        ASSERT_TRUE(
            Fits(OnServer("tolvex30.exe.minisig"), OnServer("tolvex30.exe"), publicKeys["work"]));
    }
}

TEST_F(UploadTest, AfterABrokenSignedOneAnUnsignedOneIsRefused) {
    ASSERT_EQ(Publish(kOld, {"--upload", Copying()}), 0) << output;
    ASSERT_EQ(Publish(kNew, {"--key", key, "--upload", FailingFrom("tolvex30.exe", true)}), 1);
    EXPECT_EQ(Publish(kNext, {"--upload", Copying()}), 1);
    EXPECT_THAT(output, HasSubstr("the build that is there is signed"));
}

TEST_F(UploadTest, SameBuildIsHandedOverAgain) {
    ASSERT_EQ(Publish(kNew, {"--key", key}), 0) << output;
    ASSERT_EQ(Publish(kNew, {"--key", key, "--upload", Copying()}), 0) << output;
    EXPECT_EQ(OnServer("tolvex30.exe"), BuildOf(kNew));
    EXPECT_EQ(fs::last_write_time(server / "tolvex30.exe"),
              fs::last_write_time(folder / "tolvex30.exe"));
}

TEST_F(UploadTest, DryRunUploadsNothing) {
    EXPECT_EQ(Publish(kNew, {"--key", key, "--upload", Copying(), "--dry-run"}), 0) << output;
    EXPECT_FALSE(fs::exists(List()));
}

/// The command is the one moment at which somebody else's work runs between the first check and
/// the last one.
TEST_F(UploadTest, FolderThatSomebodyChangesMeanwhileIsPutBack) {
    ASSERT_EQ(Publish(kOld, {"--key", key}), 0) << output;
    const std::string before = Read("tolvex30.exe.minisig");
    EXPECT_EQ(Publish(kNew, {"--key", key, "--upload", "truncate -s 100 {file}"}), 1);
    EXPECT_THAT(output, HasSubstr("somebody else changes it"));
    EXPECT_EQ(Published(), BuildOf(kOld));
    EXPECT_EQ(Read("tolvex30.exe.minisig"), before);
    EXPECT_FALSE(fs::exists(folder / "previous"));
}

}  // namespace
}  // namespace publish
