#include "runtime/events.h"
#include "unit/inet_test.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

/// Bytes of which no two stretches are alike.
std::string Distinct(std::size_t count) {
    std::string bytes;
    for (std::size_t i = 0; bytes.size() < count; ++i) {
        bytes += std::to_string(i) + ",";
    }
    bytes.resize(count);
    return bytes;
}

class InetBody : public InetTest {
protected:
    /// The body as it is handed out, and how long each slice was.
    std::string ReadAll(std::size_t slice = 1024) {
        std::string body;
        while (true) {
            const Bytes chunk = inet.GetChunk(slice);
            sizes.push_back(chunk.size());
            if (chunk.empty()) {
                return body;
            }
            body += chunk.View();
        }
    }

    /// Of 5000 bytes, in blocks that are no multiple of a slice.
    void ExpectWholeSlices(const std::string& body) {
        EXPECT_EQ(ReadAll(), body);
        EXPECT_THAT(sizes, ElementsAre(1024, 1024, 1024, 1024, 904, 0));
    }

    std::vector<std::size_t> sizes;
};

TEST_F(InetBody, SlicesAreWholeAcrossTheBordersOfTheBlocks) {
    const std::string body = Distinct(5000);
    StartBody(body, 700);
    ExpectWholeSlices(body);
}

TEST_F(InetBody, SlicesAreWholeThoughManyBlocksAreNeededForOne) {
    const std::string body = Distinct(2500);
    StartBody(body, 100);
    EXPECT_EQ(ReadAll(), body);
    EXPECT_THAT(sizes, ElementsAre(1024, 1024, 452, 0));
}

TEST_F(InetBody, BlockLargerThanASliceIsCut) {
    const std::string body = Distinct(4096);
    StartBody(body, 65536);
    EXPECT_EQ(ReadAll(), body);
    EXPECT_THAT(sizes, ElementsAre(1024, 1024, 1024, 1024, 0));
}

TEST_F(InetBody, ThatEndsBeforeItsContentLengthIsALostConnection) {
    StartBody("abcdef", 3, [](headless::Reply& reply) {
        reply.headers = "HTTP/1.1 200 OK\r\nContent-Length: 7\r\n";
    });
    EXPECT_EQ(inet.GetChunk(1024), "abcdef");
    EXPECT_EQ(ErrorOf([this] { inet.GetChunk(1024); }), error_number::kRequestTimedOut);
}

TEST_F(InetBody, WithoutAContentLengthEndsWhereTheServerCloses) {
    StartBody("abcdef", 3, [](headless::Reply& reply) { reply.headers = "HTTP/1.1 200 OK\r\n"; });
    EXPECT_EQ(ReadAll(), "abcdef");
}

TEST_F(InetBody, InChunksOfTheTransferHasNoLengthToMiss) {
    StartBody("abcdef", 3, [](headless::Reply& reply) {
        reply.headers = "HTTP/1.1 200 OK\r\nContent-Length: 7\r\nTransfer-Encoding: chunked\r\n";
    });
    EXPECT_EQ(ReadAll(), "abcdef");
}

TEST_F(InetBody, EmptyChunkIsTheEndAndStaysSo) {
    StartBody("abc", 3);
    EXPECT_EQ(inet.GetChunk(1024), "abc");
    EXPECT_EQ(inet.GetChunk(1024), "");
    EXPECT_EQ(inet.GetChunk(1024), "");
}

TEST_F(InetBody, EmptyBodyEndsAtOnce) {
    StartBody("", 16);
    EXPECT_EQ(inet.GetChunk(1024), "");
}

TEST_F(InetBody, ReadAheadIsBoundedToTwoBlocks) {
    StartBody(Distinct(10000), 1000);
    Pump(500);
    EXPECT_EQ(world.network.blocksAskedFor, 2U);
    inet.GetChunk(400);
    Pump(500);
    EXPECT_EQ(world.network.blocksAskedFor, 2U) << "the first block is not used up";
    inet.GetChunk(600);
    Pump(500);
    EXPECT_EQ(world.network.blocksAskedFor, 3U);
}

TEST_F(InetBody, BytesThatAreThereComeWithoutAPump) {
    StartBody(Distinct(2000), 1000);
    Pump(100);
    const std::int64_t pumps = world.pumps;
    EXPECT_EQ(inet.GetChunk(1024).size(), 1024U);
    EXPECT_EQ(world.pumps, pumps);
}

TEST_F(InetBody, WaitingForBytesYields) {
    StartBody(Distinct(2000), 300);
    world.trace.Clear();
    inet.GetChunk(1024);
    EXPECT_THAT(world.trace.Lines(), ElementsAre("DoEventsWaiting"));
}

/// A body whose blocks are there whenever they are asked for.
class InetReadyBody : public InetBody {
protected:
    void TearDown() override { EXPECT_EQ(world.pumps, pumps_) << "waited for what is there"; }

    void Start(const std::string& body, std::size_t blockSize,
               std::function<void(headless::Reply&)> change = {}) {
        StartBody(body, blockSize, [&](headless::Reply& reply) {
            reply.ready = true;
            if (change) {
                change(reply);
            }
        });
        pumps_ = world.pumps;
    }

private:
    std::int64_t pumps_ = 0;
};

TEST_F(InetReadyBody, IsReadWithoutAPump) {
    const std::string body = Distinct(5000);
    Start(body, 700);
    ExpectWholeSlices(body);
}

TEST_F(InetReadyBody, IsReadTwoBlocksAhead) {
    Start(Distinct(10000), 1000);
    EXPECT_EQ(world.network.blocksAskedFor, 2U);
    inet.GetChunk(1000);
    EXPECT_EQ(world.network.blocksAskedFor, 3U);
}

TEST_F(InetReadyBody, ThatIsEmptyEndsAtOnce) {
    Start("", 700);
    EXPECT_EQ(inet.GetChunk(1024), "");
}

TEST_F(InetReadyBody, ThatEndsBeforeItsContentLengthIsAnswerFirstAndThenALostConnection) {
    Start("abcdef", 700, [](headless::Reply& reply) {
        reply.headers = "HTTP/1.1 200 OK\r\nContent-Length: 7\r\n";
    });
    EXPECT_EQ(states.back(), inet_state::kResponseCompleted);
    EXPECT_EQ(inet.ResponseCode(), 200);
    EXPECT_EQ(inet.GetChunk(1024), "abcdef");
    EXPECT_EQ(ErrorOf([this] { inet.GetChunk(1024); }), error_number::kRequestTimedOut);
}

TEST_F(InetBody, LostConnectionHandsOutWhatWasThereFirst) {
    StartBody(Distinct(5000), 700, [](headless::Reply& reply) {
        reply.ready = true;
        reply.breakAfter = 1500;
    });
    EXPECT_EQ(inet.GetChunk(1024).size(), 1024U);
    EXPECT_EQ(inet.GetChunk(1024).size(), 476U);
    EXPECT_EQ(ErrorOf([this] { inet.GetChunk(1024); }), error_number::kRequestTimedOut);
}

TEST_F(InetBody, HeadHasNoBody) {
    Script("HEAD", headless::FileReply("body"));
    inet.Execute("host/file", "HEAD");
    Pump(20);
    ASSERT_EQ(states.back(), 12);
    EXPECT_EQ(ErrorOf([&] { inet.GetChunk(1024); }), 35756);
    EXPECT_EQ(world.network.blocksAskedFor, 0U);
}

TEST_F(InetBody, NothingCanBeReadBeforeTheAnswer) {
    EXPECT_EQ(ErrorOf([&] { inet.GetChunk(1024); }), 35756);
    ScriptSilence();
    inet.Execute("host/file", "GET");
    EXPECT_EQ(ErrorOf([&] { inet.GetChunk(1024); }), 35756);
}

TEST_F(InetBody, LostConnectionHandsOutWhatCameFirst) {
    const std::string body = Distinct(5000);
    StartBody(body, 700, [](headless::Reply& reply) { reply.breakAfter = 1500; });
    EXPECT_EQ(inet.GetChunk(1024), body.substr(0, 1024));
    EXPECT_EQ(inet.GetChunk(1024), body.substr(1024, 476));
    EXPECT_EQ(ErrorOf([&] { inet.GetChunk(1024); }), 35758);
}

TEST_F(InetBody, LostConnectionStaysLost) {
    StartBody(Distinct(5000), 700, [](headless::Reply& reply) { reply.breakAfter = 0; });
    EXPECT_EQ(ErrorOf([&] { inet.GetChunk(1024); }), 35758);
    EXPECT_EQ(ErrorOf([&] { inet.GetChunk(1024); }), 35758);
}

TEST_F(InetBody, LostConnectionDeliversNoStateAfter12) {
    StartBody(Distinct(5000), 700, [](headless::Reply& reply) { reply.breakAfter = 700; });
    Pump(1000);
    EXPECT_EQ(states.back(), 12);
}

TEST_F(InetBody, EndBeyondThePromisedLengthIsTheEnd) {
    const std::string body = Distinct(1500);
    StartBody(body, 700,
              [](headless::Reply& reply) { reply.headers = "H\r\nContent-Length: 1499\r\n"; });
    EXPECT_EQ(ReadAll(), body);
}

TEST_F(InetBody, EndOfABodyThatPromisesNoLengthIsTheEnd) {
    const std::string body = Distinct(1500);
    for (const char* headers : {"H\r\n", "H\r\nContent-Length: many\r\n"}) {
        StartBody(body, 700, [headers](headless::Reply& reply) { reply.headers = headers; });
        EXPECT_EQ(ReadAll(), body) << headers;
    }
}

TEST_F(InetBody, PromisedLengthCountsForEachBodyAnew) {
    StartBody("first", 5);
    EXPECT_EQ(ReadAll(), "first");
    StartBody("next", 4,
              [](headless::Reply& reply) { reply.headers = "H\r\nContent-Length: 5\r\n"; });
    EXPECT_EQ(inet.GetChunk(1024), "next");
    EXPECT_EQ(ErrorOf([&] { inet.GetChunk(1024); }), 35758);
}

TEST_F(InetBody, WhateverEndedItAmidTheBodyIs35758) {
    StartBody(Distinct(5000), 700, [](headless::Reply& reply) { reply.stallAfter = 0; });
    inet.OnFailed(1, error_number::kNoConnection);
    EXPECT_EQ(ErrorOf([&] { inet.GetChunk(1024); }), 35758);
}

TEST_F(InetBody, CancelInsideGetChunkIs35756) {
    StartBody(Distinct(5000), 700, [](headless::Reply& reply) { reply.stallAfter = 700; });
    world.After(100, [this] { inet.Cancel(); });
    EXPECT_EQ(ErrorOf([&] { inet.GetChunk(1024); }), 35756);
    EXPECT_FALSE(inet.StillExecuting());
}

TEST_F(InetBody, NextRequestInsideGetChunkEndsTheOldBodyOnly) {
    StartBody(Distinct(5000), 700, [](headless::Reply& reply) { reply.stallAfter = 700; });
    world.network.Answer("GET http://host/next", headless::FileReply("next"));
    world.After(100, [this] { inet.Execute("host/next", "GET"); });
    EXPECT_EQ(ErrorOf([&] { inet.GetChunk(1024); }), 35756);
    Pump(100);
    EXPECT_EQ(inet.GetChunk(1024), "next");
}

TEST_F(InetBody, NextRequestInsideGetChunkIsNotWaitedForByTheOldCall) {
    StartBody(Distinct(5000), 700, [](headless::Reply& reply) { reply.stallAfter = 700; });
    headless::Reply next = headless::FileReply("next and more");
    next.stallAfter = 4;
    world.network.Answer("GET http://host/next", next);
    const std::int64_t start = world.uptime;
    world.After(100, [this] {
        inet.Execute("host/next", "GET");
        Pump(100);
        EXPECT_FALSE(inet.StillExecuting());
    });
    EXPECT_EQ(ErrorOf([&] { inet.GetChunk(1024); }), 35756);
    EXPECT_LT(world.uptime - start, 1000);
    EXPECT_EQ(inet.GetChunk(4), "next");
}

TEST_F(InetBody, RunThatEndsLeavesGetChunk) {
    StartBody(Distinct(5000), 700, [](headless::Reply& reply) { reply.stallAfter = 700; });
    world.After(100, [] { EndRunAtNextPump(); });
    EXPECT_THROW(inet.GetChunk(1024), EndProgram);
}

}  // namespace
}  // namespace swiftpatch
