#include "runtime/runtime_error.h"
#include "unit/check_support.h"

namespace swiftpatch {
namespace {

/// What a server says about the new build, and what the check makes of it.
struct BadServer {
    const char* name;
    headless::Reply reply;
    const char* title;  ///< Of the failure that is reported.
};

void PrintTo(const BadServer& server, std::ostream* out) { *out << server.name; }

headless::Reply Failing(std::int32_t number) {
    headless::Reply reply;
    reply.failure = number;
    return reply;
}

headless::Reply Page(std::int32_t status, const std::string& page) {
    headless::Reply reply = headless::FileReply(page);
    reply.status = status;
    return reply;
}

constexpr const char* kLink = "Bad Download Link";
constexpr const char* kConnection = "No Connection";

class UpdateCheckBadServers : public CheckTest, public testing::WithParamInterface<BadServer> {
protected:
    void SetUp() override {
        Stage("3.0.12.5", 250000, serverTime - std::chrono::hours(1));
        const bool all = GetParam().title == std::string(kConnection);
        world.network.Answer(Head(kNewBuild), GetParam().reply);
        world.network.Answer(Head(kLicence), all ? GetParam().reply : LengthReply("4000"));
    }
};

TEST_P(UpdateCheckBadServers, AreReportedAndChangeNoFile) {
    const std::string program = Content("tolvex.exe");
    const std::string staged = Content("tolvex30.exe");
    const std::vector<std::string> names = world.disk.Names();
    std::string title;
    world.user.AtDialog("frmRunning", [&title](Form& form) {
        title = form.Caption;
        form.Unload();
    });

    RunCheck(200000);

    EXPECT_EQ(title, GetParam().title);
    EXPECT_FALSE(world.RunOver());
    EXPECT_TRUE(Window().cmdClose.Enabled);
    EXPECT_EQ(world.disk.Names(), names);
    EXPECT_EQ(Content("tolvex.exe"), program);
    EXPECT_EQ(Content("tolvex30.exe"), staged);
    EXPECT_FALSE(Requested(Get(kNewBuild)));
}

INSTANTIATE_TEST_SUITE_P(
    OfTheCheck, UpdateCheckBadServers,
    testing::Values(
        BadServer{"Silent", SilentReply(), kConnection},
        BadServer{"Refused", Failing(error_number::kNoConnection), kConnection},
        BadServer{"Reset", Failing(error_number::kRequestFailed), kConnection},
        BadServer{"NotFoundWithAPage", Page(404, "<html>Not found</html>"), kConnection},
        BadServer{"NotFoundWithAPageButALicence", Page(404, "<html>Not found</html>"), kLink},
        BadServer{"NoLength", headless::HeaderReply(""), kLink},
        BadServer{"NegativeLength", LengthReply("-250000"), kLink},
        BadServer{"LengthThatIsNoNumber", LengthReply("many"), kLink},
        BadServer{"HugeLength", LengthReply("99999999999999999999"), kLink},
        BadServer{"LengthZero", LengthReply("0"), kLink}),
    [](const auto& test) { return std::string(test.param.name); });

class UpdateCheckBadAnswers : public CheckTest {
protected:
    void PublishBody(const std::string& promised, const headless::Reply& get) {
        world.network.Answer(
            Head(kNewBuild),
            Quiet(headless::HeaderReply("Content-Length: " + promised +
                                        "\r\nLast-Modified: " + kServerDate + "\r\n")));
        world.network.Answer(Get(kNewBuild), get);
        world.user.Answer("The file does not exist.");
    }
};

TEST_F(UpdateCheckBadAnswers, EmptyBodyEndsInTheEnginesReport) {
    PublishBody("250000", headless::FileReply(""));
    world.user.Answer("The file is probably corrupt.");
    ExpectReport("Internet Connection Timeout", BrokenTransfer("9\r\nSubscript out of range"));
    const std::string program = Content("tolvex.exe");
    RunCheck();
    EXPECT_EQ(Content("tolvex30.exe"), "(no such file)");
    EXPECT_EQ(Content("tolvex.exe"), program);
    EXPECT_FALSE(world.RunOver());
}

TEST_F(UpdateCheckBadAnswers, BodyShorterThanPromisedIsComparedAllTheSame) {
    PublishBody("250000", headless::FileReply(headless::Build("3.0.12.5", 240000)));
    RunCheck();
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "Click on Install Button.");
    EXPECT_FALSE(world.trace.Contains(Set("lblStatus.Caption", "100 % completed")));
}

TEST_F(UpdateCheckBadAnswers, BodyLongerThanPromisedIsComparedAllTheSame) {
    PublishBody("250000", headless::FileReply(headless::Build("3.0.12.5", 300000)));
    RunCheck();
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "Click on Install Button.");
    EXPECT_EQ(Content("tolvex30.exe").size(), 300000U);
}

TEST_F(UpdateCheckBadAnswers, MissingDateCountsAsTheFirstOf2001) {
    world.network.Answer(Head(kNewBuild), LengthReply("250000"));
    Stage("3.0.12.5", 250000, MakeDateTime({2001, 1, 1, 0, 0, 0}));
    RunCheck();
    EXPECT_EQ(Window().check.serverDateText, "01/01/2001");
    EXPECT_EQ(Window().check.serverDate, MakeDateTime({2001, 1, 1, 0, 0, 0}));
    EXPECT_EQ(Window().lblStatus.Caption.Get(), "Click on Install Button.");
}

TEST_F(UpdateCheckBadAnswers, PageInPlaceOfTheBuildIsThrownAway) {
    PublishBody("250000", Page(200, "<html>" + std::string(249994, ' ')));
    world.user.Answer("The file is probably corrupt.");
    ExpectReport("Internet Connection Timeout", BrokenTransfer("9\r\nSubscript out of range"));
    RunCheck();
    EXPECT_EQ(Content("tolvex30.exe"), "(no such file)");
}

}  // namespace
}  // namespace swiftpatch
