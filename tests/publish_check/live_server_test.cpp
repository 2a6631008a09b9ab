// Against a server on this machine, through libcurl.
#include "publish_check/live_server.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "publish_check/python_server.h"
#include "publish_check/run.h"
#include "publish_check/sample_server.h"
#include "support/minisign_signer.h"

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
        std::ofstream(folder / "tolvex30.exe.minisig", std::ios::binary)
            << maker.SignBuild(swiftpatch::HashOfBuild(good.build.get.body),
                               swiftpatch::TrustedCommentFor("tolvex30.exe"));
        server = std::make_unique<PythonServer>(SWIFTPATCH_ODD_SERVER, folder);
    }
    static void TearDownTestSuite() {
        server.reset();
        fs::remove_all(folder);
    }

    int RunOn(const std::string& manner, const std::vector<std::string>& more = {}) {
        std::ostringstream text;
        std::vector<std::string> arguments{server->Folder(manner), "--installed", "3.0.11.0",
                                           "--json"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const int status = RunPublishCheck(arguments, text, text);
        output = text.str();
        return status;
    }

    static inline const swiftpatch::MinisignSigner maker{"maker"};
    static inline const std::vector<std::string> keys{"--keys", maker.PublicKeyText()};
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

TEST_F(LiveServer, LastingRedirectOfTheNewKindIsFollowedToo) {
    EXPECT_EQ(RunOn("moved-308"), 0) << output;
    EXPECT_THAT(output, HasSubstr("The server redirects to http://127.0.0.1:"));
}

TEST_F(LiveServer, DownloadWithoutALengthIsAFault) {
    EXPECT_EQ(RunOn("unlengthed"), 1) << output;
    EXPECT_THAT(output, HasSubstr(R"("code":"no-length-of-body")"));
}

TEST_F(LiveServer, DownloadOfAnotherLengthIsAFault) {
    EXPECT_EQ(RunOn("shorter"), 1) << output;
    EXPECT_THAT(output, HasSubstr(R"("code":"other-length")"));
}

TEST_F(LiveServer, ThatWantsToBeAskedLaterIsAFaultThatSaysSo) {
    EXPECT_EQ(RunOn("busy"), 1) << output;
    EXPECT_THAT(output, HasSubstr(R"("code":"rate-limit")"));
    EXPECT_THAT(output, HasSubstr("after 120"));
}

TEST_F(LiveServer, CacheThatHasAnotherBuildIsWarnedOf) {
    RunOn("stale");
    EXPECT_THAT(output, HasSubstr(R"("code":"stale-cache")"));
    RunOn("good");
    EXPECT_THAT(output, Not(HasSubstr("stale-cache")));
}

TEST_F(LiveServer, BodyInAnswerToHeadIsNoted) {
    EXPECT_EQ(RunOn("generous"), 0) << output;
    EXPECT_THAT(output, HasSubstr(R"("code":"body-to-head")"));
    RunOn("good");
    EXPECT_THAT(output, Not(HasSubstr("body-to-head")));
}

TEST_F(LiveServer, BrokenDownloadEndsWith1) {
    EXPECT_EQ(RunOn("cut"), 1) << output;
    EXPECT_THAT(output, HasSubstr(R"("code":"broken-body")"));
    EXPECT_THAT(output, HasSubstr(R"("outcome":"broken-download")"));
}

TEST_F(LiveServer, WithoutKeysTheSignatureIsNotAskedFor) {
    EXPECT_EQ(RunOn("good"), 0) << output;
    EXPECT_THAT(output, Not(HasSubstr("minisig")));
    EXPECT_FALSE(ReadLiveServer(server->Folder("good")).signature.get.answered);
}

TEST_F(LiveServer, SignedEndsWith0) {
    EXPECT_EQ(RunOn("good", keys), 0) << output;
    EXPECT_THAT(output, HasSubstr(R"("subject":"tolvex30.exe.minisig","code":"signed")"));
    EXPECT_THAT(output, HasSubstr(R"("GET tolvex30.exe.minisig","GET tolvex30.exe"],)"));
}

TEST_F(LiveServer, SignatureThatIsRedirectedIsFollowed) {
    EXPECT_EQ(RunOn("moved", keys), 0) << output;
    EXPECT_THAT(output, HasSubstr(R"("code":"signed")"));
}

TEST_F(LiveServer, UnsignedEndsWith1) {
    EXPECT_EQ(RunOn("unsigned", keys), 1) << output;
    EXPECT_THAT(output, HasSubstr(R"("code":"missing")"));
    EXPECT_THAT(output, HasSubstr(R"("outcome":"signature-missing")"));
    EXPECT_EQ(RunOn("unsigned"), 0) << output;
}

TEST_F(LiveServer, SignatureThatBreaksOffIsAFault) {
    EXPECT_EQ(RunOn("cut-signature", keys), 1) << output;
    EXPECT_THAT(output, HasSubstr(R"("subject":"tolvex30.exe.minisig","code":"broken-body")"));
    EXPECT_THAT(output, HasSubstr(R"("outcome":"broken-download")"));
}

TEST_F(LiveServer, SignatureBehindAPageForEverythingIsAFault) {
    EXPECT_EQ(RunOn("page", keys), 1) << output;
    EXPECT_THAT(output, HasSubstr(R"("code":"unreadable")"));
}

TEST_F(LiveServer, NoAnswerEndsWith2) {
    EXPECT_EQ(RunOn("closed"), 2) << output;
    EXPECT_THAT(output, HasSubstr("no answer from http://127.0.0.1:"));
}

class HttpsServer : public LiveServer {
protected:
    static void SetUpTestSuite() {
        LiveServer::SetUpTestSuite();
        const std::string make = SWIFTPATCH_MAKE_CERTIFICATES " " + (folder / "tls").string();
        ASSERT_EQ(std::system(make.c_str()), 0);
        setenv("SSL_CERT_FILE", (folder / "tls" / "authority.pem").c_str(), 1);
    }
    static void TearDownTestSuite() {
        unsetenv("SSL_CERT_FILE");
        LiveServer::TearDownTestSuite();
    }

    int RunWith(const std::string& certificate, const std::string& manner = "good") {
        const PythonServer https(SWIFTPATCH_ODD_SERVER, folder,
                                 (folder / "tls" / (certificate + ".pem")).string());
        std::ostringstream text;
        const int status = RunPublishCheck(
            {https.Folder(manner), "--installed", "3.0.11.0", "--json"}, text, text);
        output = text.str();
        return status;
    }
};

TEST_F(HttpsServer, GoodEndsWith0AndSaysForHowLong) {
    EXPECT_EQ(RunWith("good"), 0) << output;
    EXPECT_THAT(output, HasSubstr(R"("code":"certificate")"));
    EXPECT_THAT(output, HasSubstr("more days"));
}

TEST_F(HttpsServer, CertificateThatSoonEndsIsWarnedOf) {
    EXPECT_EQ(RunWith("ending"), 0) << output;
    EXPECT_THAT(output, HasSubstr(R"("code":"certificate-ends")"));
}

TEST_F(HttpsServer, RedirectToHttpIsNotFollowed) {
    EXPECT_EQ(RunWith("good", "unprotected"), 2) << output;
    EXPECT_THAT(output, HasSubstr("redirects from a secure address to one that is not"));
}

TEST_F(HttpsServer, EveryFaultOfACertificateIsNamed) {
    const std::vector<std::pair<std::string, std::string>> faults{
        {"expired", "has expired or is not valid yet"},
        {"early", "has expired or is not valid yet"},
        {"name", "was issued to a server of another name"},
        {"unknown", "by an authority that this system does not trust"},
        {"self", "by an authority that this system does not trust"},
        {"incomplete", "by an authority that this system does not trust"},
    };
    for (const auto& [certificate, words] : faults) {
        EXPECT_EQ(RunWith(certificate), 2) << certificate;
        EXPECT_THAT(output, HasSubstr(words)) << certificate;
    }
}

TEST(NoServer, EndsWith2) {
    std::ostringstream text;
    // Port 1 of this machine: nobody listens there.
    EXPECT_EQ(RunPublishCheck({"http://127.0.0.1:1/"}, text, text), 2);
    EXPECT_THAT(text.str(), HasSubstr("no answer from http://127.0.0.1:1/"));
}

}  // namespace
}  // namespace publish_check
