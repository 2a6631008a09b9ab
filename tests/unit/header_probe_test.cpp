#include "net/header_probe.h"

#include <limits>

#include "runtime/runtime_error.h"
#include "unit/check_support.h"

namespace swiftpatch {
namespace {

class HeaderProbe : public ProgramTest {
protected:
    HeaderProbe() { Window().Inet1.RequestTimeout = std::numeric_limits<std::int32_t>::max(); }

    void Answer(const std::string& headerLines) {
        world.network.Answer(kHead, Quiet(headless::HeaderReply(headerLines)));
    }

    std::int32_t Size() {
        std::int32_t size = 0;
        const std::int64_t start = world.uptime;
        world.Dispatch([&] { size = GetHTTPFileSize(Window(), kNewBuild); });
        waited = world.uptime - start;
        return size;
    }

    std::string Date() {
        std::string date;
        const std::int64_t start = world.uptime;
        world.Dispatch([&] { date = GetHTTPFileDate(Window(), kNewBuild); });
        waited = world.uptime - start;
        return date;
    }

    std::int32_t SizeOf(const std::string& length) {
        Answer("Content-length: " + length + "\r\n");
        return Size();
    }

    std::string DateOf(const std::string& lastModified) {
        Answer("Last-modified: " + lastModified + "\r\n");
        return Date();
    }

    /// Three seconds and what is missing to the next whole one.
    bool HasWaitedThreeSeconds() const { return waited > 3000 && waited <= 4000; }

    static constexpr const char* kHead = "HEAD http://tolvex.example/files/tolvex30.exe";
    std::int64_t waited = 0;  ///< Milliseconds of the last probe.
};

TEST_F(HeaderProbe, LengthOfZeroCountsAsUnknown) {
    EXPECT_EQ(SizeOf("0"), -1);
    EXPECT_LT(waited, 100);
}

TEST_F(HeaderProbe, LengthOfOneIsOne) { EXPECT_EQ(SizeOf("1"), 1); }

TEST_F(HeaderProbe, MissingLengthIsUnknownWithoutAWait) {
    Answer("Server: test\r\n");
    EXPECT_EQ(Size(), -1);
    EXPECT_LT(waited, 100);
}

TEST_F(HeaderProbe, LengthThatIsNoNumberIsUnknownWithoutAWait) {
    EXPECT_EQ(SizeOf("abc"), -1);
    EXPECT_LT(waited, 100);
}

TEST_F(HeaderProbe, NegativeLengthIsUnknown) { EXPECT_EQ(SizeOf("-5"), -1); }

TEST_F(HeaderProbe, LengthMayHaveASignAndBlanks) {
    EXPECT_EQ(SizeFromHeader(" 42 "), 42);
    EXPECT_EQ(SizeOf("+7"), 7);
}

TEST_F(HeaderProbe, LengthIsRoundedHalvesToEven) {
    EXPECT_EQ(SizeOf("12.5"), 12);
    EXPECT_EQ(SizeOf("13.5"), 14);
    EXPECT_EQ(SizeOf("12.51"), 13);
    EXPECT_EQ(SizeOf("0.5"), -1);
    EXPECT_EQ(SizeOf("1.5"), 2);
}

TEST_F(HeaderProbe, EmptyLengthIsUnknown) {
    EXPECT_EQ(SizeFromHeader(""), -1);
    EXPECT_EQ(SizeOf(""), -1);
}

TEST_F(HeaderProbe, LargestLengthIs2147483647) {
    EXPECT_EQ(SizeOf("2147483647"), 2147483647);
    EXPECT_LT(waited, 100);
}

TEST_F(HeaderProbe, LengthOver31BitsIsUnknownAfterThreeSeconds) {
    EXPECT_EQ(SizeOf("2147483648"), -1);
    EXPECT_TRUE(HasWaitedThreeSeconds()) << waited;
    EXPECT_FALSE(Window().headerProbe);
}

TEST_F(HeaderProbe, SizeDoesNotLookAtTheStatus) {
    headless::Reply reply = headless::FileReply("<html>no such file</html>");
    reply.status = 404;
    world.network.Answer(kHead, reply);
    EXPECT_EQ(Size(), 25);
}

TEST_F(HeaderProbe, HeaderNamesHaveNoCase) {
    Answer("CONTENT-LENGTH: 7\r\nLAST-MODIFIED: Tue, 15 Nov 1994 08:12:31 GMT\r\n");
    EXPECT_EQ(Size(), 7);
    EXPECT_EQ(Date(), "15 Nov 1994 08:12:31");
}

TEST_F(HeaderProbe, HeadersOfTheProbeBeforeAreForgotten) {
    world.network.AnswerNext(kHead, LengthReply("1000"));
    EXPECT_EQ(Size(), 1000);
    headless::Reply failing;
    failing.failure = error_number::kNoConnection;
    world.network.Answer(kHead, failing);
    EXPECT_EQ(Size(), -1);
    EXPECT_EQ(Window().Inet1.GetHeader(), "");
}

TEST_F(HeaderProbe, FlagStandsForAsLongAsTheProbeRuns) {
    std::vector<bool> flags;
    world.AtPump(1, [&] { flags.push_back(Window().headerProbe); });
    SizeOf("5");
    world.AtPump(1, [&] { flags.push_back(Window().headerProbe); });
    DateOf("Tue, 15 Nov 1994 08:12:31 GMT");
    EXPECT_EQ(flags, (std::vector<bool>{true, true}));
    EXPECT_FALSE(Window().headerProbe);
}

TEST_F(HeaderProbe, FlagStandsBeforeTheRequestIsMade) {
    world.network.onRequest = [this] { world.trace.Add(Window().headerProbe ? "up" : "down"); };
    SizeOf("5");
    DateOf("Tue, 15 Nov 1994 08:12:31 GMT");
    EXPECT_EQ(world.trace.Count("up"), 2U);
    EXPECT_EQ(world.trace.Count("down"), 0U);
}

TEST_F(HeaderProbe, EndOfAProbeIsNotTakenForADownload) {
    Window().downloadMode = DownloadMode::kBuild;
    Window().expectedSize = 5;
    SizeOf("5");
    DateOf("Tue, 15 Nov 1994 08:12:31 GMT");
    EXPECT_TRUE(world.trace.StartingWith("Open").empty());
    EXPECT_TRUE(world.trace.StartingWith("cmdClose").empty());
}

TEST_F(HeaderProbe, FlagIsDownAfterEveryEnding) {
    SizeOf("5");
    EXPECT_FALSE(Window().headerProbe) << "number";
    SizeOf("abc");
    EXPECT_FALSE(Window().headerProbe) << "no number";
    DateOf("abc");
    EXPECT_FALSE(Window().headerProbe) << "no date";
    DateOf("");
    EXPECT_FALSE(Window().headerProbe) << "no header";
    world.network.Answer(Get(kNewBuild), SilentReply());
    Window().Inet1.Execute(kNewBuild, "GET");
    Size();
    EXPECT_FALSE(Window().headerProbe) << "size while executing";
    Date();
    EXPECT_FALSE(Window().headerProbe) << "date while executing";
}

TEST_F(HeaderProbe, FlagIsDownAgainBeforeTheWaitAfterAnError) {
    std::vector<bool> flags;
    world.After(1000, [&] { flags.push_back(Window().headerProbe); });
    SizeOf("2147483648");
    world.After(1000, [&] { flags.push_back(Window().headerProbe); });
    DateOf("");
    EXPECT_EQ(flags, (std::vector<bool>{false, false}));
}

TEST_F(HeaderProbe, RequestThatCannotStartIsUnknownAfterThreeSeconds) {
    world.network.Answer(Get(kNewBuild), SilentReply());
    Window().Inet1.Execute(kNewBuild, "GET");
    EXPECT_EQ(Size(), -1);
    EXPECT_TRUE(HasWaitedThreeSeconds()) << waited;
    EXPECT_EQ(Date(), "01/01/2001");
    EXPECT_TRUE(HasWaitedThreeSeconds()) << waited;
    EXPECT_TRUE(world.trace.StartingWith("MsgBox").empty());
}

TEST_F(HeaderProbe, SizeGivesUpAfterFiveMillionYields) {
    world.network.Answer(kHead, SilentReply());
    const std::int64_t pumps = world.pumps;
    EXPECT_EQ(Size(), -1);
    EXPECT_EQ(world.pumps - pumps, 5000000);
    EXPECT_FALSE(Window().headerProbe);
    EXPECT_TRUE(Window().Inet1.StillExecuting());
}

TEST_F(HeaderProbe, DateWaitsWithoutLimit) {
    world.network.Answer(kHead, SilentReply());
    const std::int64_t pumps = world.pumps;
    world.AtPump(5000100, [this] {
        EXPECT_TRUE(Window().headerProbe);
        Window().Inet1.OnAnswer(1, 200, "Last-modified: Tue, 15 Nov 1994 08:12:31 GMT\r\n");
    });
    EXPECT_EQ(Date(), "15 Nov 1994 08:12:31");
    EXPECT_GE(world.pumps - pumps, 5000100);
}

TEST_F(HeaderProbe, DateLosesWeekdayAndZone) {
    EXPECT_EQ(DateOf("Tue, 15 Nov 1994 08:12:31 GMT"), "15 Nov 1994 08:12:31");
    EXPECT_LT(waited, 100);
}

TEST_F(HeaderProbe, DateKeepsTheServersForm) {
    EXPECT_EQ(DateOf("Sunday, 06-Nov-94 08:49:37 GMT"), "06-Nov-94 08:49:37");
    EXPECT_EQ(DateOf("Tue, 5 Jan 2026 8:01:02 GMT"), "5 Jan 2026 8:01:02");
}

TEST_F(HeaderProbe, DateInTheOldestFormIsNoneWithoutAWait) {
    EXPECT_EQ(DateOf("Sun Nov  6 08:49:37 1994"), "01/01/2001");
    EXPECT_LT(waited, 100);
}

TEST_F(HeaderProbe, EveryZoneIsRemovedFromADate) {
    EXPECT_EQ(DateOf("Tue, 15 GMT Nov 1994 08:12:31 GMT"), "15 Nov 1994 08:12:31");
}

TEST_F(HeaderProbe, ZoneInSmallLettersStays) {
    EXPECT_EQ(DateOf("Tue, 15 Nov 1994 08:12:31 gmt"), "01/01/2001");
    EXPECT_LT(waited, 100);
}

TEST_F(HeaderProbe, OnlyTheFirstCommaAndBlankCuts) {
    EXPECT_EQ(DateOf("Tue, Nov 15, 1994 08:12:31 GMT"), "Nov 15, 1994 08:12:31");
}

TEST_F(HeaderProbe, DateWithoutAWeekdayLosesItsFirstCharacter) {
    EXPECT_EQ(DateOf("15 Nov 1994 08:12:31 GMT"), "5 Nov 1994 08:12:31");
}

TEST_F(HeaderProbe, MissingDateIsTheFirstOf2001AfterThreeSeconds) {
    Answer("Content-length: 5\r\n");
    EXPECT_EQ(Date(), "01/01/2001");
    EXPECT_TRUE(HasWaitedThreeSeconds()) << waited;
    EXPECT_TRUE(world.trace.StartingWith("MsgBox").empty());
}

TEST_F(HeaderProbe, NonsenseDateIsTheFirstOf2001WithoutAWait) {
    EXPECT_EQ(DateOf("Tue, 35 Nov 1994 08:12:31 GMT"), "01/01/2001");
    EXPECT_LT(waited, 100);
    EXPECT_EQ(DateOf("x"), "01/01/2001");
    EXPECT_LT(waited, 100);
}

TEST_F(HeaderProbe, EachIsOneRequestForTheHeadersOnly) {
    Answer("Content-length: 5\r\nLast-modified: Tue, 15 Nov 1994 08:12:31 GMT\r\n");
    Size();
    Date();
    EXPECT_EQ(world.network.Requests(), (std::vector<std::string>{kHead, kHead}));
}

}  // namespace
}  // namespace swiftpatch
