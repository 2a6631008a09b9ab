#include "publish_check/key_argument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "publish_check/command_line.h"
#include "publish_check/run.h"
#include "support/minisign_signer.h"

namespace publish_check {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class KeyArgument : public testing::Test {
protected:
    KeyArgument() {
        std::string pattern = (fs::temp_directory_path() / "publish-check-XXXXXX").string();
        folder = mkdtemp(pattern.data());
    }
    ~KeyArgument() override { fs::remove_all(folder); }

    std::string File(const std::string& content) const {
        const fs::path path = folder / "minisign.pub";
        std::ofstream(path, std::ios::binary) << content;
        return path.string();
    }
    static std::string Wrong(const std::vector<std::string>& arguments) {
        try {
            ReadCommandLine(arguments);
        } catch (const UsageError& error) {
            return error.what();
        }
        return {};
    }

    const std::string key = swiftpatch::MinisignSigner("maker").PublicKeyText();
    const std::string other = swiftpatch::MinisignSigner("spare").PublicKeyText();
    fs::path folder;
};

TEST_F(KeyArgument, NoneWantsNothingSigned) {
    EXPECT_EQ(ReadCommandLine({"files"}).keys, std::nullopt);
}

TEST_F(KeyArgument, IsTheKey) {
    EXPECT_EQ(ReadCommandLine({"files", "--keys", key}).keys, key);
    EXPECT_EQ(ReadCommandLine({"files", "--keys=" + key}).keys, key);
}

TEST_F(KeyArgument, IsTheFile) {
    for (const std::string end : {"", "\n", "\r\n", "\nmore\n"}) {
        const std::string file = File("untrusted comment: minisign public key\n" + key + end);
        EXPECT_EQ(ReadCommandLine({"files", "--keys", file}).keys, key) << end;
    }
}

TEST_F(KeyArgument, ManyAreTakenUpToTheFolder) {
    const std::string file = File("x\n" + other + "\n");
    CommandLine line = ReadCommandLine({"--keys", key, file, folder.string(), "--json"});
    EXPECT_EQ(line.keys, key + " " + other);
    EXPECT_EQ(line.target, folder.string());
    EXPECT_TRUE(line.json);
    line = ReadCommandLine({"--keys", key, "http://host/", "--keys=" + other});
    EXPECT_EQ(line.keys, key + " " + other);
    EXPECT_EQ(line.target, "http://host/");
    // As they stand in a data file.
    EXPECT_EQ(ReadCommandLine({"files", "--keys", key + " " + other}).keys, key + " " + other);
}

TEST_F(KeyArgument, FolderWithTheBeginningOfAKeyIsTheFolder) {
    const std::string name = "RW-" + folder.filename().string();
    fs::create_directory(name);
    EXPECT_EQ(ReadCommandLine({"--keys", key, name}).target, name);
    fs::remove(name);
}

TEST_F(KeyArgument, ThatCannotBeReadIsRefused) {
    const std::string shorter = key.substr(0, 55);
    EXPECT_THAT(Wrong({"files", "--keys"}), HasSubstr("a key is missing"));
    EXPECT_THAT(Wrong({"files", "--keys", shorter}),
                HasSubstr("\"" + shorter + "\" is no signing key"));
    EXPECT_THAT(Wrong({"files", "--keys", shorter}), HasSubstr("refuses every update"));
    EXPECT_THAT(Wrong({"files", "--keys="}), HasSubstr("\"\" is no signing key"));
    EXPECT_THAT(Wrong({"files", "--keys", key, shorter}), HasSubstr("is no signing key"));
    EXPECT_THAT(Wrong({"files", "--keys", key + "  " + other}), HasSubstr("is no signing key"));
    EXPECT_THAT(Wrong({"files", "--keys", key, key, key, key, key}), HasSubstr("more than 4 keys"));
}

TEST_F(KeyArgument, FileWithoutAKeyIsRefusedAndNotShown) {
    for (const std::string content : {"", "x", "x\n", "x\nRWRSECRETSECRET\n"}) {
        const std::string wrong = Wrong({"files", "--keys", File(content)});
        EXPECT_THAT(wrong, HasSubstr("the second line of \"")) << content;
        EXPECT_THAT(wrong, HasSubstr("refuses every update"));
        EXPECT_THAT(wrong, Not(HasSubstr("SECRET")));
    }
}

TEST_F(KeyArgument, ThatCannotBeReadEndsWith2) {
    std::ostringstream out;
    std::ostringstream errors;
    EXPECT_EQ(RunPublishCheck({folder.string(), "--keys", "RWno"}, out, errors), 2);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(errors.str(), HasSubstr("\"RWno\" is no signing key"));
}

}  // namespace
}  // namespace publish_check
