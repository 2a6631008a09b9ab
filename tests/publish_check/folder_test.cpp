#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "fixtures/animation.h"
#include "publish_check/folder_server.h"
#include "publish_check/run.h"
#include "publish_check/sample_server.h"
#include "support/minisign_signer.h"

namespace publish_check {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// A folder as a publisher fills it, which goes with the test.
class FolderTest : public testing::Test {
protected:
    FolderTest() {
        std::string pattern = (fs::temp_directory_path() / "publish-check-XXXXXX").string();
        folder = mkdtemp(pattern.data());
        Write("tolvex30.exe", SampleBuild(kPublishedVersion, 210000));
        Write("filecopy.avi", swiftpatch::fixtures::MakeAnimation(2));
    }
    ~FolderTest() override { fs::remove_all(folder); }

    void Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder / name, std::ios::binary) << bytes;
    }

    int RunOn(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), folder.string());
        std::ostringstream text;
        const int status = RunPublishCheck(arguments, text, text);
        output = text.str();
        return status;
    }

    fs::path folder;
    std::string output;
};

TEST_F(FolderTest, GoodEndsWith0) {
    EXPECT_EQ(RunOn({"--installed", "3.0.11.0"}), 0) << output;
    EXPECT_THAT(output, HasSubstr("Every updater would be served."));
    EXPECT_THAT(output, HasSubstr("product version 3.00.12.05 (file version 9.08.07.06)"));
    EXPECT_THAT(output, HasSubstr("An updater beside version 3.00.11.00\n  ok       It fetches "
                                  "3.00.12.05 and offers to install it."));
}

TEST_F(FolderTest, HiddenBuildEndsWith1) {
    EXPECT_EQ(RunOn({"--installed", "2.9"}), 1) << output;
    EXPECT_THAT(output, HasSubstr("WARNING: the published build is newer"));
    EXPECT_THAT(output, HasSubstr("Not every updater would be served."));
}

TEST_F(FolderTest, EmptyEndsWith1) {
    fs::remove(folder / "tolvex30.exe");
    fs::remove(folder / "filecopy.avi");
    EXPECT_EQ(RunOn({}), 1) << output;
    EXPECT_THAT(output, HasSubstr("tolvex30.exe\n  FAULT    The server answers HEAD with the "
                                  "status 404"));
}

TEST_F(FolderTest, NameInOtherCaseIsPointedOut) {
    fs::rename(folder / "tolvex30.exe", folder / "TOLVEX30.EXE");
    EXPECT_EQ(RunOn({}), 1) << output;
    EXPECT_THAT(output, HasSubstr("The folder holds \"TOLVEX30.EXE\""));
}

TEST_F(FolderTest, DatesAreThoseOfTheFiles) {
    using namespace std::chrono;
    const sys_seconds time = sys_days{year{2020} / 2 / 5} + hours{8} + minutes{12};
    fs::last_write_time(folder / "tolvex30.exe", file_clock::from_sys(time));
    const ServerState state = ReadFolder(folder);
    EXPECT_THAT(state.build.head.headers,
                HasSubstr(std::string("Last-Modified: ") + kPublishedDate + "\r\n"));
    EXPECT_EQ(state.build.head.body, "");
    EXPECT_EQ(state.build.get.body.size(), 210000U);
}

TEST_F(FolderTest, FileOfTomorrowEndsWith1) {
    fs::last_write_time(folder / "tolvex30.exe",
                        fs::file_time_type::clock::now() + std::chrono::hours(24));
    EXPECT_EQ(RunOn({}), 1) << output;
    EXPECT_THAT(output, HasSubstr("lies in the future"));
}

TEST_F(FolderTest, FolderInPlaceOfAFileIsNoFile) {
    fs::remove(folder / "tolvex30.exe");
    fs::create_directory(folder / "tolvex30.exe");
    EXPECT_EQ(RunOn({}), 1) << output;
}

class SignedFolderTest : public FolderTest {
protected:
    SignedFolderTest() {
        Write("tolvex30.exe.minisig",
              maker.SignBuild(swiftpatch::HashOfBuild(SampleBuild(kPublishedVersion, 210000)),
                              swiftpatch::TrustedCommentFor("tolvex30.exe")));
    }

    swiftpatch::MinisignSigner maker{"maker"};
    std::vector<std::string> keys{"--keys", maker.PublicKeyText()};
};

TEST_F(SignedFolderTest, GoodEndsWith0) {
    EXPECT_EQ(RunOn(keys), 0) << output;
    EXPECT_THAT(output, HasSubstr("\ntolvex30.exe.minisig\n  ok       The key "));
    EXPECT_THAT(output, HasSubstr("GET tolvex30.exe.minisig, GET tolvex30.exe\n"));
}

TEST_F(SignedFolderTest, WithoutKeysNothingIsSaidOfIt) {
    EXPECT_EQ(RunOn({}), 0) << output;
    EXPECT_THAT(output, Not(HasSubstr("minisig")));
    EXPECT_FALSE(ReadFolder(folder).signature.get.answered);
}

TEST_F(SignedFolderTest, WithoutASignatureEndsWith1) {
    fs::remove(folder / "tolvex30.exe.minisig");
    EXPECT_EQ(RunOn(keys), 1) << output;
    EXPECT_THAT(output, HasSubstr("tolvex30.exe.minisig\n  FAULT    GET is answered with the "
                                  "status 404"));
}

TEST_F(SignedFolderTest, SignatureInOtherCaseIsPointedOut) {
    fs::rename(folder / "tolvex30.exe.minisig", folder / "TOLVEX30.EXE.minisig");
    EXPECT_EQ(RunOn(keys), 1) << output;
    EXPECT_THAT(output, HasSubstr("The folder holds \"TOLVEX30.EXE.minisig\""));
}

TEST_F(SignedFolderTest, KeyMayComeFromItsFile) {
    Write("minisign.pub", "untrusted comment: x\n" + maker.PublicKeyText() + "\n");
    EXPECT_EQ(RunOn({"--keys", (folder / "minisign.pub").string()}), 0) << output;
    EXPECT_THAT(output, HasSubstr("has signed this build."));
}

}  // namespace
}  // namespace publish_check
