// Against a server on this machine, through libcurl.
#include "publish_check/live_server.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

#include "publish_check/python_server.h"
#include "publish_check/run.h"
#include "publish_check/sample_server.h"

namespace publish_check {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class LiveServer : public testing::Test {
protected:
    static void SetUpTestSuite() {
        std::string pattern = (fs::temp_directory_path() / "publish-check-XXXXXX").string();
        folder = mkdtemp(pattern.data());
        const ServerState good = GoodServer();
        std::ofstream(folder / "tolvex30.exe", std::ios::binary) << good.build.get.body;
        std::ofstream(folder / "filecopy.avi", std::ios::binary) << good.animation.get.body;
        server = std::make_unique<PythonServer>(SWIFTPATCH_ODD_SERVER, folder);
    }
    static void TearDownTestSuite() {
        server.reset();
        fs::remove_all(folder);
    }

    int RunOn(const std::string& manner) {
        std::ostringstream text;
        const int status = RunPublishCheck(
            {server->Folder(manner), "--installed", "3.0.11.0", "--json"}, text, text);
        output = text.str();
        return status;
    }

    static inline fs::path folder;
    static inline std::unique_ptr<PythonServer> server;
    std::string output;
};

TEST_F(LiveServer, GoodEndsWith0) {
    EXPECT_EQ(RunOn("good"), 0) << output;
    EXPECT_THAT(output, HasSubstr(R"("served":true)"));
}

TEST_F(LiveServer, SchemeAndSlashMayBeLeftOut) {
    const std::string address = server->Folder("good").substr(std::string("http://").size());
    const ServerState state = ReadLiveServer(address.substr(0, address.size() - 1));
    EXPECT_EQ(state.address, address);
    EXPECT_EQ(state.build.get.body, GoodServer().build.get.body);
}

TEST_F(LiveServer, WithoutLengthEndsWith1) {
    EXPECT_EQ(RunOn("chunked"), 1) << output;
    EXPECT_THAT(output, HasSubstr(R"("code":"no-length")"));
    EXPECT_THAT(output, HasSubstr(R"("outcome":"no-connection")"));
}

TEST_F(LiveServer, WithoutDateEndsWith1) {
    EXPECT_EQ(RunOn("undated"), 1) << output;
    EXPECT_THAT(output, HasSubstr(R"("code":"no-date")"));
}

TEST_F(LiveServer, RedirectsAreFollowed) {
    EXPECT_EQ(RunOn("moved"), 0) << output;
    EXPECT_THAT(output, HasSubstr(R"("code":"redirected")"));
}

TEST_F(LiveServer, BrokenDownloadEndsWith1) {
    EXPECT_EQ(RunOn("cut"), 1) << output;
    EXPECT_THAT(output, HasSubstr(R"("code":"broken-body")"));
    EXPECT_THAT(output, HasSubstr(R"("outcome":"broken-download")"));
}

TEST_F(LiveServer, NoAnswerEndsWith2) {
    EXPECT_EQ(RunOn("closed"), 2) << output;
    EXPECT_THAT(output, HasSubstr("no answer from http://127.0.0.1:"));
}

TEST(NoServer, EndsWith2) {
    std::ostringstream text;
    // Port 1 of this machine: nobody listens there.
    EXPECT_EQ(RunPublishCheck({"http://127.0.0.1:1/"}, text, text), 2);
    EXPECT_THAT(text.str(), HasSubstr("no answer from http://127.0.0.1:1/"));
}

}  // namespace
}  // namespace publish_check
