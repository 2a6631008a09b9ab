#include "unit/inet_test.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

/// The clock is looked at four times a second.
constexpr std::int64_t kSlack = 300;

class InetTimeout : public InetTest {
protected:
    InetTimeout() { inet.RequestTimeout = 15; }
};

TEST_F(InetTimeout, IsSixtySecondsUntilSet) {
    const Inet fresh("fresh");
    EXPECT_EQ(fresh.RequestTimeout, 60);
}

TEST_F(InetTimeout, SilenceBeforeTheHeadersIsState11With35758) {
    ScriptSilence();
    inet.Execute("host/file", "GET");
    Pump(14900);
    EXPECT_TRUE(inet.StillExecuting());
    Pump(100 + kSlack);
    EXPECT_THAT(states, ElementsAre(11));
    EXPECT_EQ(inet.ResponseCode(), 35758);
    EXPECT_FALSE(inet.StillExecuting());
}

TEST_F(InetTimeout, EveryStateStartsItAgain) {
    ScriptSilence();
    inet.Execute("host/file", "GET");
    Pump(10000);
    inet.OnState(1, inet_state::kConnected);
    Pump(14900);
    EXPECT_TRUE(inet.StillExecuting());
    Pump(100 + kSlack);
    EXPECT_THAT(states, ElementsAre(4, 11));
}

TEST_F(InetTimeout, FurtherAttemptsToConnectDoNotStartItAgain) {
    ScriptSilence();
    inet.Execute("host/file", "GET");
    for (const int state :
         {inet_state::kResolvingHost, inet_state::kHostResolved, inet_state::kConnecting,
          inet_state::kDisconnecting, inet_state::kDisconnected, inet_state::kConnecting}) {
        inet.OnState(1, state);
    }
    Pump(10000);
    inet.OnState(1, inet_state::kConnecting);
    Pump(5000 + kSlack);
    EXPECT_THAT(states, ElementsAre(1, 2, 3, 9, 10, 3, 3, 11));
    EXPECT_EQ(inet.ResponseCode(), 35758);
}

TEST_F(InetTimeout, ConnectingAfterAnAnswerStartsItAgain) {
    ScriptSilence();
    inet.Execute("host/file", "GET");
    for (const int state : {inet_state::kConnecting, inet_state::kConnected,
                            inet_state::kRequesting, inet_state::kResponseReceived}) {
        inet.OnState(1, state);
    }
    Pump(10000);
    // As after an answer that leads to another address.
    inet.OnState(1, inet_state::kConnecting);
    Pump(14900);
    EXPECT_TRUE(inet.StillExecuting());
    Pump(100 + kSlack);
    EXPECT_EQ(inet.ResponseCode(), 35758);
}

TEST_F(InetTimeout, AttemptsOfTheRequestBeforeDoNotCount) {
    ScriptSilence();
    inet.Execute("host/file", "GET");
    inet.OnState(1, inet_state::kDisconnected);
    inet.Cancel();
    inet.Execute("host/file", "GET");
    Pump(10000);
    inet.OnState(2, inet_state::kConnecting);
    Pump(14900);
    EXPECT_TRUE(inet.StillExecuting());
}

TEST_F(InetTimeout, WorkOfThePlatformStartsItAgainWithoutAState) {
    ScriptSilence();
    inet.Execute("host/file", "GET");
    Pump(10000);
    inet.OnWork(1);
    Pump(14900);
    EXPECT_TRUE(inet.StillExecuting());
    Pump(100 + kSlack);
    EXPECT_THAT(states, ElementsAre(11));
}

TEST_F(InetTimeout, WorkForADroppedRequestDoesNotStartItAgain) {
    ScriptSilence();
    inet.Execute("host/file", "GET");
    inet.Cancel();
    inet.Execute("host/file", "GET");
    Pump(10000);
    inet.OnWork(1);
    Pump(5000 + kSlack);
    EXPECT_THAT(states, ElementsAre(11));
}

TEST_F(InetTimeout, DroppedReportsDoNotStartItAgain) {
    ScriptSilence();
    inet.Execute("host/file", "GET");
    inet.Cancel();
    inet.Execute("host/file", "GET");
    Pump(10000);
    inet.OnState(1, inet_state::kConnected);
    Pump(5000 + kSlack);
    EXPECT_THAT(states, ElementsAre(11));
}

TEST_F(InetTimeout, SilenceInTheBodyIs35758AfterWhatCame) {
    const std::string body(5000, 'b');
    StartBody(body, 700, [](headless::Reply& reply) { reply.stallAfter = 1500; });
    EXPECT_EQ(inet.GetChunk(1024).size(), 1024U);
    const std::int64_t start = world.uptime;
    EXPECT_EQ(inet.GetChunk(1024).size(), 476U);
    EXPECT_EQ(ErrorOf([&] { inet.GetChunk(1024); }), 35758);
    EXPECT_GE(world.uptime - start, 14900);
    EXPECT_LE(world.uptime - start, 15000 + kSlack);
    EXPECT_EQ(states.back(), 12);
}

TEST_F(InetTimeout, EveryBlockStartsItAgain) {
    StartBody(std::string(5000, 'b'), 700, [](headless::Reply& reply) { reply.stallAfter = 0; });
    const std::int64_t start = world.uptime;
    world.After(10000, [this] { inet.OnBlock(1, Bytes::Of("x")); });
    EXPECT_EQ(inet.GetChunk(1024), "x");
    EXPECT_GE(world.uptime - start, 24900);
}

TEST_F(InetTimeout, ProgramThatDoesNotReadIsNoSilenceOfTheServer) {
    const std::string body(3000, 'b');
    StartBody(body, 1000);
    Pump(600000);
    std::string read;
    for (Bytes chunk = inet.GetChunk(1024); !chunk.empty(); chunk = inet.GetChunk(1024)) {
        read += chunk.View();
    }
    EXPECT_EQ(read, body);
}

TEST_F(InetTimeout, CancelledRequestDoesNotTimeOut) {
    ScriptSilence();
    inet.Execute("host/file", "GET");
    inet.Cancel();
    Pump(60000);
    EXPECT_TRUE(states.empty());
}

TEST_F(InetTimeout, AnsweredHeadDoesNotTimeOut) {
    Script("HEAD", headless::HeaderReply(""));
    inet.Execute("host/file", "HEAD");
    Pump(60000);
    EXPECT_EQ(states.back(), 12);
    EXPECT_EQ(inet.ResponseCode(), 200);
}

TEST_F(InetTimeout, ClockThatWrapsAroundDoesNotEndARequest) {
    world.uptime = 0xFFFFFFFF - 3000;
    ScriptSilence();
    inet.Execute("host/file", "GET");
    Pump(14000);
    EXPECT_TRUE(inet.StillExecuting());
    Pump(1000 + kSlack);
    EXPECT_THAT(states, ElementsAre(11));
}

TEST_F(InetTimeout, NextRequestAfterATimeOutRuns) {
    ScriptSilence();
    inet.Execute("host/file", "GET");
    Pump(16000);
    ASSERT_EQ(inet.ResponseCode(), 35758);
    StartBody("body", 4);
    EXPECT_EQ(inet.GetChunk(1024), "body");
}

}  // namespace
}  // namespace swiftpatch
