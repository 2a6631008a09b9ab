#include "unit/inet_test.h"

namespace swiftpatch {
namespace {

using headless::FileReply;
using headless::HeaderReply;
using headless::RedirectReply;
using testing::ElementsAre;
using testing::SizeIs;

class InetRedirect : public InetTest {
protected:
    void Ask(const std::string& url, const std::string& verb = "HEAD") {
        inet.Execute(url, verb);
        Pump(1000);
    }
    const std::vector<std::string>& Requests() { return world.network.Requests(); }
};

TEST_F(InetRedirect, IsFollowedByTheSameMethodWhateverItsKind) {
    for (const int status : {301, 302, 303, 307, 308}) {
        for (const std::string verb : {"HEAD", "GET"}) {
            world.network.Answer(verb + " http://host/file", RedirectReply(status, "/moved"));
            world.network.Answer(verb + " http://host/moved", FileReply("body"));
            Ask("host/file", verb);
            EXPECT_EQ(Requests().back(), verb + " http://host/moved") << status;
            EXPECT_EQ(inet.ResponseCode(), 200) << status;
            EXPECT_EQ(states.back(), inet_state::kResponseCompleted);
            EXPECT_EQ(inet.GetHeader("Content-length"), "4");
            EXPECT_TRUE(inet.Redirected());
            EXPECT_EQ(inet.Address(), "http://host/moved");
        }
    }
}

TEST_F(InetRedirect, OtherAnswersWithAnAddressAreAnswers) {
    for (const int status : {200, 201, 300, 304, 305, 306, 404}) {
        Script("HEAD", RedirectReply(status, "/moved"));
        Ask("host/file");
        EXPECT_EQ(inet.ResponseCode(), status);
        EXPECT_FALSE(inet.Redirected());
    }
}

TEST_F(InetRedirect, WithoutAnAddressIsAnAnswer) {
    headless::Reply reply = HeaderReply("Content-Length: 7\r\n");
    reply.status = 302;
    Script("HEAD", reply);
    Ask("host/file");
    EXPECT_EQ(inet.ResponseCode(), 302);
    EXPECT_EQ(inet.GetHeader("Content-length"), "7");
}

TEST_F(InetRedirect, StatesOfBothRequestsAreReportedAndOneEnd) {
    Script("HEAD", RedirectReply(302, "/moved"));
    world.network.Answer("HEAD http://host/moved", HeaderReply(""));
    Ask("host/file");
    EXPECT_THAT(states, ElementsAre(3, 4, 5, 6, 7, 8, 3, 4, 5, 6, 7, 8, 12));
}

TEST_F(InetRedirect, TenAreFollowedAndNotEleven) {
    for (int hop = 0; hop < 10; ++hop) {
        world.network.Answer("HEAD http://host/" + std::to_string(hop),
                             RedirectReply(302, std::to_string(hop + 1)));
    }
    world.network.Answer("HEAD http://host/10", HeaderReply(""));
    Ask("host/0");
    EXPECT_EQ(inet.ResponseCode(), 200);
    world.network.Answer("HEAD http://host/10", RedirectReply(302, "11"));
    Ask("host/0");
    EXPECT_EQ(states.back(), inet_state::kError);
    EXPECT_EQ(inet.ResponseCode(), error_number::kRequestFailed);
    EXPECT_THAT(Requests(), SizeIs(22));
}

TEST_F(InetRedirect, FromHttpToHttpsAndOnIsFollowed) {
    Script("HEAD", RedirectReply(301, "https://host/file"));
    world.network.Answer("HEAD https://host/file", RedirectReply(302, "https://other/file"));
    world.network.Answer("HEAD https://other/file", HeaderReply(""));
    Ask("host/file");
    EXPECT_EQ(inet.ResponseCode(), 200);
    EXPECT_EQ(inet.Fault(), TransferFault::kNone);
}

TEST_F(InetRedirect, FromHttpsToHttpIsRefusedBeforeItIsAsked) {
    for (const char* target : {"http://host/file", "http://host:443/file", "HTTP://other/x"}) {
        world.network.Answer("GET https://host/file", RedirectReply(302, target));
        Ask("https://host/file", "GET");
        EXPECT_EQ(states.back(), inet_state::kError);
        EXPECT_EQ(inet.Fault(), TransferFault::kUnprotectedRedirect);
        EXPECT_FALSE(inet.StillExecuting());
        EXPECT_EQ(Requests().back(), "GET https://host/file");
    }
}

TEST_F(InetRedirect, BackToHttpByWayOfHttpsIsRefusedToo) {
    Script("HEAD", RedirectReply(302, "https://host/file"));
    world.network.Answer("HEAD https://host/file", RedirectReply(302, "http://host/other"));
    Ask("host/file");
    EXPECT_EQ(states.back(), inet_state::kError);
    EXPECT_EQ(inet.Fault(), TransferFault::kUnprotectedRedirect);
}

TEST_F(InetRedirect, ToWhatIsNoAddressFails) {
    for (const char* target : {"ftp://host/file", "http://", "//:80/", "http://user@host/"}) {
        Script("HEAD", RedirectReply(302, target));
        Ask("host/file");
        EXPECT_EQ(states.back(), inet_state::kError) << target;
        EXPECT_EQ(inet.ResponseCode(), error_number::kMalformedUrl) << target;
    }
}

TEST_F(InetRedirect, ToARequestThatCannotBeStartedFails) {
    Script("HEAD", RedirectReply(302, "/moved"));
    headless::Reply reply;
    reply.cannotStart = true;
    world.network.Answer("HEAD http://host/moved", reply);
    Ask("host/file");
    EXPECT_EQ(states.back(), inet_state::kError);
    EXPECT_EQ(inet.ResponseCode(), error_number::kRequestFailed);
    EXPECT_FALSE(inet.StillExecuting());
}

TEST_F(InetRedirect, RequestAfterItBeginsAnew) {
    Script("HEAD", RedirectReply(302, "https://host/file"));
    world.network.Answer("HEAD https://host/file", RedirectReply(302, "http://host/x"));
    Ask("host/file");
    ASSERT_EQ(inet.Fault(), TransferFault::kUnprotectedRedirect);
    world.network.Answer("HEAD http://host/other", HeaderReply(""));
    Ask("host/other");
    EXPECT_EQ(inet.Fault(), TransferFault::kNone);
    EXPECT_FALSE(inet.Redirected());
    EXPECT_EQ(inet.ResponseCode(), 200);
}

TEST_F(InetRedirect, CanBeCancelledOnTheWay) {
    Script("HEAD", RedirectReply(302, "/moved"));
    headless::Reply silent;
    silent.silent = true;
    world.network.Answer("HEAD http://host/moved", silent);
    inet.Execute("host/file", "HEAD");
    Pump(100);
    ASSERT_THAT(Requests(), SizeIs(2));
    EXPECT_TRUE(inet.StillExecuting());
    inet.Cancel();
    states.clear();
    Pump(100);
    EXPECT_THAT(states, ElementsAre());
    EXPECT_FALSE(inet.StillExecuting());
}

class InetFault : public InetTest {};

TEST_F(InetFault, OfACertificateIsKnownAfterTheError) {
    headless::Reply reply;
    reply.failure = error_number::kNoConnection;
    reply.fault = TransferFault::kCertificateExpired;
    Script("HEAD", reply);
    inet.Execute("host/file", "HEAD");
    Pump(100);
    EXPECT_EQ(inet.Fault(), TransferFault::kCertificateExpired);
    EXPECT_EQ(inet.ResponseCode(), error_number::kNoConnection);
    inet.ResetRequest();
    EXPECT_EQ(inet.Fault(), TransferFault::kNone);
}

TEST_F(InetFault, OfAProxyThatWantsALogonIsAnAnswerAllTheSame) {
    headless::Reply reply = HeaderReply("Content-Length: 7\r\n");
    reply.status = 407;
    Script("HEAD", reply);
    inet.Execute("host/file", "HEAD");
    Pump(100);
    EXPECT_EQ(states.back(), inet_state::kResponseCompleted);
    EXPECT_EQ(inet.GetHeader("Content-length"), "7");
    EXPECT_EQ(inet.Fault(), TransferFault::kProxyLogon);
}

}  // namespace
}  // namespace swiftpatch
