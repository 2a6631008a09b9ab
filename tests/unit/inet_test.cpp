#include "unit/inet_test.h"

#include "runtime/events.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

class InetRequest : public InetTest {};

TEST_F(InetRequest, StatesComeInTheirOrderAndTheAnswerLast) {
    Script("HEAD", headless::HeaderReply("Content-Length: 5\r\n"));
    inet.Execute("http://host/file", "HEAD");
    EXPECT_THAT(states, ElementsAre()) << "no state before a pump";
    Pump(20);
    EXPECT_THAT(states, ElementsAre(3, 4, 5, 6, 7, 8, 12));
    EXPECT_EQ(inet.ResponseCode(), 200);
}

TEST_F(InetRequest, StillExecutingTurnsFalseInTheStepThatDeliversState12) {
    std::vector<bool> executing;
    inet.StateChanged = [&](int) { executing.push_back(inet.StillExecuting()); };
    Script("HEAD", headless::HeaderReply(""));
    EXPECT_FALSE(inet.StillExecuting());
    inet.Execute("host/file", "HEAD");
    while (inet.StillExecuting()) {
        EXPECT_LT(executing.size(), 7U) << "the end was delivered, but it still executes";
        Pump(1);
    }
    EXPECT_THAT(executing, ElementsAre(true, true, true, true, true, true, false));
}

TEST_F(InetRequest, StillExecutingTurnsFalseInTheStepThatDeliversState11) {
    std::vector<bool> executing;
    inet.StateChanged = [&](int) { executing.push_back(inet.StillExecuting()); };
    headless::Reply reply;
    reply.states = {3};
    reply.failure = error_number::kNoConnection;
    Script("GET", reply);
    inet.Execute("host/file", "GET");
    while (inet.StillExecuting()) {
        EXPECT_LT(executing.size(), 2U);
        Pump(1);
    }
    EXPECT_THAT(executing, ElementsAre(true, false));
}

TEST_F(InetRequest, NoStateComesAfterState12) {
    // The rest of the body is still to come: the request is open.
    StartBody("body", 4, [](headless::Reply& reply) { reply.stallAfter = 2; });
    states.clear();
    inet.OnState(1, inet_state::kDisconnecting);
    inet.OnState(1, inet_state::kResponseReceived);
    inet.OnAnswer(1, 500, "late");
    EXPECT_THAT(states, ElementsAre());
    EXPECT_EQ(inet.ResponseCode(), 200);
}

TEST_F(InetRequest, NoStateComesAfterState11) {
    headless::Reply reply;
    reply.failure = error_number::kNoConnection;
    Script("GET", reply);
    inet.Execute("host/file", "GET");
    Pump(20);
    ASSERT_EQ(states.back(), inet_state::kError);
    states.clear();
    inet.OnState(1, inet_state::kDisconnecting);
    inet.OnAnswer(1, 200, "late");
    inet.OnFailed(1, error_number::kRequestFailed);
    EXPECT_THAT(states, ElementsAre());
    EXPECT_EQ(inet.ResponseCode(), 35754);
}

TEST_F(InetRequest, ReportsOfAnotherRequestAreDropped) {
    ScriptSilence();
    inet.Execute("host/file", "GET");
    inet.Cancel();
    inet.Execute("host/file", "GET");
    inet.OnState(1, 3);
    inet.OnAnswer(1, 200, "stale");
    inet.OnBlock(1, Bytes::Of("stale"));
    inet.OnFailed(1, error_number::kNoConnection);
    EXPECT_THAT(states, ElementsAre());
    EXPECT_TRUE(inet.StillExecuting());
    EXPECT_EQ(inet.GetHeader(), "");
    inet.OnAnswer(2, 200, "present");
    EXPECT_THAT(states, ElementsAre(12));
    EXPECT_EQ(inet.GetHeader(), "present");
}

TEST_F(InetRequest, BlockOfAnotherRequestIsNoPartOfTheBody) {
    StartBody("first", 5);
    inet.Cancel();
    StartBody("second", 6);
    inet.OnBlock(1, Bytes::Of("stale"));
    EXPECT_EQ(inet.GetChunk(1024), "second");
}

TEST_F(InetRequest, AddressWithoutASchemeIsHttp) {
    Script("HEAD", headless::HeaderReply(""));
    inet.Execute("host/file", "HEAD");
    EXPECT_THAT(world.network.Requests(), ElementsAre("HEAD http://host/file"));
}

TEST_F(InetRequest, AddressThatIsNotHttpIs35752AndNothingRuns) {
    EXPECT_EQ(ErrorOf([&] { inet.Execute("ftp://host/file", "GET"); }), 35752);
    EXPECT_EQ(ErrorOf([&] { inet.Execute("", "GET"); }), 35752);
    EXPECT_FALSE(inet.StillExecuting());
    EXPECT_THAT(world.network.Requests(), ElementsAre());
}

TEST_F(InetRequest, ExecuteWhileExecutingIs35764AndTheFirstGoesOn) {
    Script("HEAD", headless::HeaderReply(""));
    inet.Execute("host/file", "HEAD");
    EXPECT_EQ(ErrorOf([&] { inet.Execute("host/other", "GET"); }), 35764);
    EXPECT_EQ(ErrorOf([&] { inet.Execute("", "QUIT"); }), 35764);
    EXPECT_TRUE(inet.StillExecuting());
    Pump(20);
    EXPECT_EQ(states.back(), 12);
    EXPECT_THAT(world.network.Requests(), ElementsAre("HEAD http://host/file"));
}

TEST_F(InetRequest, RequestThatCannotBeStartedDoesNotExecute) {
    headless::Reply reply;
    reply.cannotStart = true;
    Script("GET", reply);
    EXPECT_EQ(ErrorOf([&] { inet.Execute("host/file", "GET"); }), 35756);
    EXPECT_FALSE(inet.StillExecuting());
    ScriptSilence();
    inet.Execute("host/file", "GET");
    EXPECT_TRUE(inet.StillExecuting());
}

TEST_F(InetRequest, QuitDropsTheAnswerWithoutTrafficAndWithoutAState) {
    StartBody("body", 4);
    states.clear();
    inet.Execute("", "QUIT");
    Pump(100);
    EXPECT_THAT(world.network.Requests(), ElementsAre("GET http://host/file"));
    EXPECT_THAT(states, ElementsAre());
    EXPECT_FALSE(inet.StillExecuting());
    EXPECT_EQ(inet.GetHeader(), "");
    EXPECT_EQ(inet.ResponseCode(), 0);
    EXPECT_EQ(ErrorOf([&] { inet.GetChunk(1024); }), 35756);
}

TEST_F(InetRequest, StatusOfAnErrorPageIsAnAnswerWithABody) {
    StartBody("not here", 8, [](headless::Reply& reply) { reply.status = 404; });
    EXPECT_EQ(states.back(), 12);
    EXPECT_EQ(inet.ResponseCode(), 404);
    EXPECT_EQ(inet.GetChunk(1024), "not here");
}

TEST_F(InetRequest, FailureBeforeTheAnswerIsState11WithItsNumber) {
    for (const std::int32_t number : {error_number::kNoConnection, error_number::kRequestFailed}) {
        headless::Reply reply;
        reply.failure = number;
        Script("GET", reply);
        inet.Execute("host/file", "GET");
        Pump(20);
        EXPECT_EQ(states.back(), 11);
        EXPECT_EQ(inet.ResponseCode(), number);
        EXPECT_FALSE(inet.StillExecuting());
    }
}

TEST_F(InetRequest, HeadersWholeAndByName) {
    Script("HEAD", headless::HeaderReply("Content-Length: 5\r\nLast-Modified: today\r\n"));
    inet.Execute("host/file", "HEAD");
    EXPECT_EQ(inet.GetHeader("Content-length"), "");
    Pump(20);
    EXPECT_EQ(inet.GetHeader(), "HTTP/1.1 200 OK\r\nContent-Length: 5\r\nLast-Modified: today\r\n");
    EXPECT_EQ(inet.GetHeader("content-LENGTH"), "5");
    EXPECT_EQ(inet.GetHeader("Last-modified"), "today");
    EXPECT_EQ(inet.GetHeader("Other"), "");
}

TEST_F(InetRequest, NothingOfTheRequestBeforeCarriesOver) {
    Script("HEAD", headless::HeaderReply("Content-Length: 5\r\n"));
    inet.Execute("host/file", "HEAD");
    Pump(20);
    inet.ResetRequest();
    EXPECT_EQ(inet.GetHeader(), "");
    EXPECT_EQ(inet.ResponseCode(), 0);

    inet.Execute("host/file", "HEAD");
    Pump(20);
    ScriptSilence();
    inet.Execute("host/file", "HEAD");
    EXPECT_EQ(inet.GetHeader("Content-length"), "");
    EXPECT_EQ(inet.ResponseCode(), 0);
}

TEST_F(InetRequest, CancelEndsItWithoutAState) {
    ScriptSilence({3, 4});
    inet.Execute("host/file", "GET");
    inet.Cancel();
    EXPECT_FALSE(inet.StillExecuting());
    Pump(100000);
    EXPECT_THAT(states, ElementsAre());
    inet.Cancel();
}

TEST_F(InetRequest, CancelInsideANotificationIsTheLastOfTheRequest) {
    inet.StateChanged = [this](int state) {
        states.push_back(state);
        if (state == inet_state::kConnected) {
            inet.Cancel();
        }
    };
    Script("GET", headless::FileReply("body"));
    inet.Execute("host/file", "GET");
    Pump(100);
    EXPECT_THAT(states, ElementsAre(3, 4));
    EXPECT_FALSE(inet.StillExecuting());
}

TEST_F(InetRequest, CancelInsideTheLastNotificationDropsTheBody) {
    inet.StateChanged = [this](int state) {
        if (state == inet_state::kResponseCompleted) {
            inet.Cancel();
        }
    };
    StartBody("body", 4);
    EXPECT_EQ(ErrorOf([&] { inet.GetChunk(1024); }), 35756);
}

TEST_F(InetRequest, NextRequestCanStartInsideTheLastNotification) {
    world.network.Answer("HEAD http://host/next", headless::HeaderReply("Content-Length: 7\r\n"));
    inet.StateChanged = [this](int state) {
        states.push_back(state);
        if (state == inet_state::kResponseCompleted && world.network.Requests().size() == 1) {
            inet.Execute("host/next", "HEAD");
        }
    };
    Script("HEAD", headless::HeaderReply("Content-Length: 5\r\n"));
    inet.Execute("host/file", "HEAD");
    Pump(100);
    EXPECT_EQ(std::count(states.begin(), states.end(), 12), 2);
    EXPECT_EQ(inet.GetHeader("Content-length"), "7");
}

TEST_F(InetRequest, ErrorOfTheEventProcedureIsNotTrappedByWhoeverPumps) {
    inet.StateChanged = [](int) { throw RuntimeError(error_number::kOverflow); };
    Script("HEAD", headless::HeaderReply(""));
    world.user.Answer("Run-time error '6'");
    bool trapped = false;
    world.Dispatch([&] {
        inet.Execute("host/file", "HEAD");
        try {
            while (inet.StillExecuting()) {
                DoEventsResting();
            }
        } catch (const RuntimeError&) {
            trapped = true;
        }
    });
    EXPECT_FALSE(trapped);
    EXPECT_TRUE(world.RunOver());
}

}  // namespace
}  // namespace swiftpatch
