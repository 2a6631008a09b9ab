// The real program over https, with good and bad certificates, and from one kind of address to the
// other.
#include "e2e/text.h"
#include "e2e/tls_front.h"
#include "e2e/update_run.h"

namespace swiftpatch::e2e {
namespace {

class Https : public UpdateRun {
protected:
    static void SetUpTestSuite() { TrustOwnAuthority(); }

    void UseHttps(const std::string& certificate = "good") {
        front_.emplace(server_.Port(), certificate);
        folder_->WriteSettings("https://" + front_->Host() + "/upd/");
    }

    // The report holds these words.
    void ExpectNoConnection(const std::string& words) {
        Install("3.0.11.0");
        StartToMainWindow();
        AnswerNoConnection();
        ExpectStopped();
        const std::string report = updater_->Text(kTxtDebug);
        EXPECT_NE(report.find(words), std::string::npos) << report;
        CloseQuietly();
        ExpectFiles({});
    }

    static Reply MovedTo(const std::string& address) {
        Reply reply;
        reply.statusLine = "HTTP/1.1 302 Found";
        reply.headers = {"Location: " + address};
        return reply;
    }

    std::optional<TlsFront> front_;
};

TEST_F(Https, WholeUpdateAsksTheSameOfTheServer) {
    UseHttps();
    UpdateFromTheServer();
    ExpectRequests(
        {"HEAD tolvex30.exe", "HEAD tolvex30.exe", "HEAD tolvex30.exe", "GET tolvex30.exe"});
    EXPECT_EQ(folder_->Read("tolvex.exe"), Build("3.0.12.5"));
    const std::vector<Request> requests = server_.Requests();
    EXPECT_EQ(requests.back().connection, 1);
}

TEST_F(Https, RedirectFromHttpIsFollowed) {
    Publish("3.0.12.5");
    front_.emplace(server_.Port(), "good");
    const std::string there = "https://" + front_->Host() + "/there/tolvex30.exe";
    server_.On("/there/tolvex30.exe", BuildReply("3.0.12.5"));
    server_.On(kBuildTarget, MovedTo(there));
    Install("3.0.11.0");
    StartToMainWindow();
    AnswerMissingBuildBox();
    AwaitOffer();
    CloseQuietly();
    EXPECT_EQ(folder_->Read("tolvex30.exe"), Build("3.0.12.5"));
}

TEST_F(Https, RedirectToHttpIsNoConnectionAndIsNotAsked) {
    Publish("3.0.12.5");
    UseHttps();
    server_.On("/there/tolvex30.exe", BuildReply("3.0.12.5"));
    server_.On(kBuildTarget, MovedTo("http://" + server_.Host() + "/there/tolvex30.exe"));
    server_.On(kLicenceTarget, MovedTo("http://" + server_.Host() + "/there/LICENSE.TXT"));
    ExpectNoConnection("The update server redirects from a secure address to one that is not.");
    ExpectRequests({"HEAD tolvex30.exe", "HEAD LICENSE.TXT"});
}

class BadCertificate : public Https, public ::testing::WithParamInterface<const char*> {};

TEST_P(BadCertificate, IsNoConnectionAndNothingIsAskedOrWritten) {
    Publish("3.0.12.5");
    UseHttps(GetParam());
    ExpectNoConnection("certificate of the update server");
    ExpectRequests({});
}

INSTANTIATE_TEST_SUITE_P(Https, BadCertificate,
                         ::testing::Values("expired", "early", "name", "unknown", "self",
                                           "incomplete"),
                         [](const auto& kind) { return std::string(kind.param); });

}  // namespace
}  // namespace swiftpatch::e2e
