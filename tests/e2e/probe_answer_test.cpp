// What the server says about the build before it is downloaded: lengths and dates of all kinds.
#include <functional>

#include "e2e/update_run.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kSoon{10000};

struct BadLength {
    const char* name;
    std::function<void(Reply&)> spoil;
};

void PrintTo(const BadLength& length, std::ostream* stream) { *stream << length.name; }

class ContentLength : public UpdateRun, public ::testing::WithParamInterface<BadLength> {};

// The licence text still shows that the server is there; the build counts as missing.
TEST_P(ContentLength, WithoutAUsableNumberIsABadLink) {
    Reply probed = BuildReply("3.0.12.5");
    GetParam().spoil(probed);
    Publish(probed);
    Install("3.0.11.0");
    StartToMainWindow();
    AnswerFailure("Bad Download Link", "The download link is invalid.\r\n\r\nThe link: " +
                                           ServerFolder() + "tolvex30.exe is not available.");
    ExpectStopped();
    Close();
    ExpectRequests({"HEAD tolvex30.exe", "HEAD LICENSE.TXT", "HEAD tolvex30.exe"});
    ExpectFiles({});
}

INSTANTIATE_TEST_SUITE_P(
    Probe, ContentLength,
    ::testing::Values(
        BadLength{"Absent", [](Reply& reply) { reply.omitContentLength = true; }},
        BadLength{"Negative", [](Reply& reply) { reply.contentLength = "-250000"; }},
        BadLength{"NoNumber", [](Reply& reply) { reply.contentLength = "many"; }},
        BadLength{"Huge", [](Reply& reply) { reply.contentLength = "99999999999999999999"; }},
        BadLength{"BelowTheSmallestBuild", [](Reply& reply) { reply.contentLength = "79999"; }}),
    [](const auto& parameter) { return parameter.param.name; });

class Logon : public UpdateRun {};

// A server can say that it is a proxy, and then ask who the user is.
TEST_F(Logon, IsNeverGivenToAServer) {
    Publish("3.0.12.5");
    for (const char* target : {kBuildTarget, kLicenceTarget}) {
        Reply proxy;
        proxy.statusLine = "HTTP/1.1 407 Proxy Authentication Required";
        proxy.headers = {"Proxy-Authenticate: Basic realm=\"tests\""};
        server_.Once("HEAD", target, proxy);
        Reply server;
        server.statusLine = "HTTP/1.1 401 Unauthorized";
        server.headers = {"WWW-Authenticate: Basic realm=\"tests\""};
        server_.Once("HEAD", target, server);
    }
    Install("3.0.11.0");
    StartToMainWindow();
    AnswerNoConnection();
    CloseQuietly();
    for (const Request& request : server_.Requests()) {
        EXPECT_EQ(request.head.find("uthorization:"), std::string::npos) << request.head;
    }
    ExpectRequests({"HEAD tolvex30.exe", "HEAD LICENSE.TXT"});
}

struct BadDate {
    const char* name;
    std::optional<std::string> value;
};

void PrintTo(const BadDate& date, std::ostream* stream) { *stream << date.name; }

class LastModified : public UpdateRun, public ::testing::WithParamInterface<BadDate> {};

TEST_P(LastModified, WithoutAUsableDateCountsAsTheYear2001) {
    Reply probed = BuildReply("3.0.12.5");
    probed.lastModified = GetParam().value;
    Publish(probed);
    Install("3.0.11.0");
    Stage("3.0.12.5", kServerTime);
    StartToMainWindow();
    AwaitOffer();
    const std::string report = updater_->Text(kTxtDebug);
    EXPECT_TRUE(
        report.find("Date of server file  tolvex30.exe  = 1/1/2001 ") != std::string::npos ||
        report.find("Date of server file  tolvex30.exe  = 12/31/2000 ") != std::string::npos)
        << report;
    CloseQuietly();
    ExpectRequests({"HEAD tolvex30.exe", "HEAD tolvex30.exe", "HEAD tolvex30.exe"});
    ExpectFiles({});
}

INSTANTIATE_TEST_SUITE_P(Probe, LastModified,
                         ::testing::Values(BadDate{"Absent", std::nullopt},
                                           BadDate{"Nonsense", "the day before, at tea time"}),
                         [](const auto& parameter) { return parameter.param.name; });

using Probe = UpdateRun;

// A probe does not look at the status, only at the length: such a page is taken for a build, and
// found out after the download.
TEST_F(Probe, LargePageInsteadOfTheBuildIsDeletedAfterTheDownload) {
    Publish(NotFound(300000));
    Install("3.0.11.0");
    StartToMainWindow();
    AnswerMissingBuildBox();
    AnswerCorruptFileBox("tolvex30.exe");
    AnswerFailure("Internet Connection Timeout",
                  "Error # 9\r\nSubscript out of range\r\n"
                  "The server or internet connection has timed out.\r\n"
                  "Please check your internet connection.");
    ExpectStopped();
    EXPECT_FALSE(updater_->Visible(kCmdRetry));
    Close();
    ExpectFiles({});
}

TEST_F(Probe, ServerThatFallsSilentIsABadLinkAfterFifteenSeconds) {
    Publish("3.0.12.5");
    Install("3.0.11.0");
    Reply silent;
    silent.silent = true;
    server_.On("HEAD", kBuildTarget, silent);
    server_.Once("HEAD", kBuildTarget, BuildReply("3.0.12.5"));
    StartToMainWindow();
    Await(
        "the second probe", [this] { return server_.Requests().size() == 2; }, kSoon);
    const SteadyTime asked = std::chrono::steady_clock::now();
    AnswerFailure("Bad Download Link", "The download link is invalid.\r\n\r\nThe link: " +
                                           ServerFolder() + "tolvex30.exe is not available.");
    EXPECT_GE(std::chrono::steady_clock::now() - asked, seconds(14));
    ExpectStopped();
    Close();
    ExpectFiles({});
}

// Before the check has set its own time-out, the control's of a minute counts, for each of the two
// probes that look for a connection.
TEST_F(Probe, ServerThatNeverAnswersIsNoConnection) {
    Reply silent;
    silent.silent = true;
    server_.Otherwise(silent);
    Install("3.0.11.0");
    StartToMainWindow();
    updater_->AwaitWindow(kFailure, seconds(150));
    AnswerNoConnection();
    ExpectStopped();
    Close();
    ExpectRequests({"HEAD tolvex30.exe", "HEAD LICENSE.TXT"});
    ExpectFiles({});
}

}  // namespace
}  // namespace swiftpatch::e2e
