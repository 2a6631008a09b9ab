#include "publish_check/assessment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "publish_check/sample_server.h"

namespace publish_check {
namespace {

using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

std::vector<std::string> FaultsIn(const std::vector<Finding>& findings) {
    std::vector<std::string> codes;
    for (const Finding& finding : findings) {
        if (finding.severity == Severity::kFault) {
            codes.push_back(finding.subject + " " + finding.code);
        }
    }
    return codes;
}

bool Has(const std::vector<Finding>& findings, Severity severity, const std::string& code) {
    return std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
        return finding.severity == severity && finding.code == code;
    });
}

Assessment Look(const ServerState& state, const std::vector<Installed>& installed = {}) {
    return Assess(state, installed, LookTime());
}

VersionAssessment LookBeside(const ServerState& state, const Version& installed) {
    return Look(state, {{installed}}).updaters.at(0);
}

/// Everything in order but this Content-length.
ServerState WithLength(const std::string& length) {
    ServerState state = GoodServer();
    state.build.head =
        Ok("Content-Length: " + length + "\r\nLast-Modified: " + kPublishedDate + "\r\n");
    return state;
}

ServerState WithDate(const std::string& header) {
    ServerState state = GoodServer();
    state.build.head = Ok("Content-Length: 210000\r\n" + header);
    return state;
}

TEST(GoodFolder, ServesEveryUpdater) {
    const Assessment assessment = Look(GoodServer());
    EXPECT_TRUE(assessment.Served());
    EXPECT_THAT(FaultsIn(assessment.findings), ElementsAre());
    ASSERT_EQ(assessment.updaters.size(), 1U);
    EXPECT_EQ(assessment.updaters[0].run.outcome, Outcome::kOffered);
    EXPECT_THAT(assessment.updaters[0].run.requests,
                ElementsAre("HEAD tolvex30.exe", "HEAD tolvex30.exe", "HEAD tolvex30.exe",
                            "GET tolvex30.exe"));
}

TEST(GoodFolder, SaysWhatTheBuildCarries) {
    const Assessment assessment = Look(GoodServer());
    ASSERT_TRUE(assessment.versions);
    EXPECT_EQ(assessment.versions->product, kPublishedVersion);
    EXPECT_TRUE(Has(assessment.findings, Severity::kGood, "version"));
}

TEST(Build, MissingIsAFault) {
    ServerState state = GoodServer();
    state.build.head = Ok("");
    state.build.head.status = 404;
    state.build.get = state.build.head;
    const Assessment assessment = Look(state);
    EXPECT_FALSE(assessment.Served());
    EXPECT_THAT(FaultsIn(assessment.findings), ElementsAre("tolvex30.exe refused"));
    EXPECT_EQ(assessment.updaters[0].run.outcome, Outcome::kBadLink);
}

TEST(Build, OneByteTooSmallIsAFault) {
    ServerState state = GoodServer();
    state.build = Published(SampleBuild(kPublishedVersion, 79999), kPublishedDate);
    const Assessment assessment = Look(state);
    EXPECT_THAT(FaultsIn(assessment.findings), ElementsAre("tolvex30.exe too-small"));
    EXPECT_EQ(assessment.updaters[0].run.outcome, Outcome::kBadLink);
    state.build = Published(SampleBuild(kPublishedVersion, 80000), kPublishedDate);
    EXPECT_TRUE(Look(state).Served());
}

TEST(Build, WithoutAReadableLengthIsAFault) {
    EXPECT_THAT(FaultsIn(Look(WithDate("")).findings), ElementsAre("tolvex30.exe no-date"));
    for (const char* length : {"", "many", "-5", "0", "99999999999999999999"}) {
        const Assessment assessment = Look(WithLength(length));
        EXPECT_FALSE(assessment.Served()) << length;
        EXPECT_THAT(FaultsIn(assessment.findings),
                    Contains(AnyOf("tolvex30.exe no-length", "tolvex30.exe bad-length")));
    }
}

TEST(Build, OfAnotherLengthThanAnnouncedIsAFault) {
    const Assessment assessment = Look(WithLength("209999"));
    EXPECT_THAT(FaultsIn(assessment.findings), ElementsAre("tolvex30.exe other-length"));
}

TEST(Build, ThatBreaksOffIsAFault) {
    ServerState state = GoodServer();
    state.build.get.body.resize(100000);
    state.build.get.problem = "connection reset";
    const Assessment assessment = Look(state);
    EXPECT_THAT(FaultsIn(assessment.findings), Contains("tolvex30.exe broken-body"));
    EXPECT_EQ(assessment.updaters[0].run.outcome, Outcome::kBrokenDownload);
}

TEST(Build, SentCompressedIsAFault) {
    ServerState state = GoodServer();
    state.build.get.headers += "Content-Encoding: gzip\r\n";
    EXPECT_THAT(FaultsIn(Look(state).findings), ElementsAre("tolvex30.exe encoded"));
}

TEST(Build, WithoutAVersionIsAFault) {
    ServerState state = GoodServer();
    state.build = Published(SampleBuild(std::nullopt, 210000), kPublishedDate);
    const Assessment assessment = Look(state);
    EXPECT_THAT(FaultsIn(assessment.findings), ElementsAre("tolvex30.exe no-version"));
    EXPECT_EQ(assessment.updaters[0].run.outcome, Outcome::kNoVersion);
}

TEST(Build, ThatWasCutBeforeItWasPublishedIsAFault) {
    ServerState state = GoodServer();
    state.build = Published(state.build.get.body.substr(0, 209990), kPublishedDate);
    EXPECT_THAT(FaultsIn(Look(state).findings), ElementsAre("tolvex30.exe cut-off"));
}

TEST(Build, ThatIsNotAnsweredIsAFault) {
    ServerState state = GoodServer();
    state.build.head = {};
    state.build.head.problem = "timed out";
    const Assessment assessment = Look(state);
    EXPECT_THAT(FaultsIn(assessment.findings), ElementsAre("tolvex30.exe no-answer"));
    EXPECT_EQ(assessment.updaters[0].run.outcome, Outcome::kBadLink);
}

TEST(Build, ThatIsRedirectedIsNoted) {
    ServerState state = GoodServer();
    state.build.head.redirected = true;
    EXPECT_TRUE(Has(Look(state).findings, Severity::kNote, "redirected"));
}

// Such a date shows in the second update only.
TEST(Date, UnreadableStopsUpdatersThatFetchedBefore) {
    for (const std::string header : {"", "Last-Modified: soon\r\n", "Last-Modified: 0\r\n"}) {
        const Assessment assessment = Look(WithDate(header), {{Version{3, 0, 11, 0}}});
        EXPECT_THAT(FaultsIn(assessment.findings),
                    Contains(AnyOf("tolvex30.exe no-date", "tolvex30.exe bad-date")));
        EXPECT_EQ(assessment.updaters[0].run.outcome, Outcome::kOffered);
        EXPECT_THAT(FaultsIn(assessment.updaters[0].findings),
                    ElementsAre("updater not-after-earlier-fetch"));
    }
}

TEST(Date, InTheFutureFetchesInEveryRun) {
    const Assessment assessment =
        Look(WithDate("Last-Modified: Fri, 07 Feb 2020 08:12:00 GMT\r\n"));
    EXPECT_THAT(FaultsIn(assessment.findings), ElementsAre("tolvex30.exe future-date"));
    EXPECT_THAT(FaultsIn(assessment.updaters[0].findings), ElementsAre("updater fetched-again"));
}

TEST(Licence, IsNeededBelow200000BytesOnly) {
    ServerState state = GoodServer();
    state.build = Published(SampleBuild(kPublishedVersion, 199999), kPublishedDate);
    EXPECT_TRUE(Look(state).Served());
    state.licence = Published(std::string(3999, 'L'));
    Assessment assessment = Look(state);
    EXPECT_THAT(FaultsIn(assessment.findings), ElementsAre("LICENSE.TXT too-small"));
    EXPECT_EQ(assessment.updaters[0].run.outcome, Outcome::kNoConnection);
    state.build = GoodServer().build;
    EXPECT_TRUE(Look(state).Served());
}

TEST(Animation, MissingStopsUpdatersThatLackIt) {
    ServerState state = GoodServer();
    state.animation.head = Ok("");
    state.animation.head.status = 404;
    const Assessment assessment = Look(state);
    EXPECT_THAT(FaultsIn(assessment.findings), ElementsAre("filecopy.avi refused"));
    EXPECT_EQ(assessment.updaters[0].run.outcome, Outcome::kOffered);
    EXPECT_THAT(FaultsIn(assessment.updaters[0].findings),
                ElementsAre("updater not-without-animation"));
}

TEST(Animation, OneByteTooSmallIsAFault) {
    ServerState state = GoodServer();
    state.animation = Published(std::string(1635, 'a'));
    EXPECT_THAT(FaultsIn(Look(state).findings), ElementsAre("filecopy.avi too-small"));
}

TEST(Animation, ThatCannotBePlayedIsAWarningOnly) {
    ServerState state = GoodServer();
    state.animation = Published(std::string(1636, 'a'));
    const Assessment assessment = Look(state);
    EXPECT_TRUE(assessment.Served());
    EXPECT_TRUE(Has(assessment.findings, Severity::kWarning, "not-playable"));
}

TEST(InstalledVersion, OlderIsServed) {
    const VersionAssessment updater = LookBeside(GoodServer(), {3, 0, 11, 0});
    EXPECT_TRUE(updater.served);
    EXPECT_EQ(updater.installed, "3.00.11.00");
    EXPECT_THAT(FaultsIn(updater.findings), ElementsAre());
}

TEST(InstalledVersion, SameIsUpToDate) {
    const VersionAssessment updater = LookBeside(GoodServer(), kPublishedVersion);
    EXPECT_TRUE(updater.served);
    EXPECT_EQ(updater.run.outcome, Outcome::kNothingNewer);
}

TEST(InstalledVersion, WithAHigherMinorPartHidesTheBuild) {
    const Assessment assessment = Look(GoodServer(), {{Version{2, 9, 0, 0}}});
    EXPECT_FALSE(assessment.Served());
    const VersionAssessment& updater = assessment.updaters[0];
    EXPECT_EQ(updater.run.outcome, Outcome::kNothingNewer);
    EXPECT_THAT(FaultsIn(updater.findings), ElementsAre("updater hidden"));
    EXPECT_THAT(updater.findings[0].text, HasSubstr("minor part 9 is above 0"));
    EXPECT_TRUE(Has(updater.findings, Severity::kNote, "offered-later"));
}

TEST(InstalledVersion, ThatDiffersInTheFourthPartOnlyHidesTheBuild) {
    const VersionAssessment updater = LookBeside(GoodServer(), {3, 0, 12, 4});
    EXPECT_THAT(FaultsIn(updater.findings), ElementsAre("updater hidden"));
    EXPECT_THAT(updater.findings[0].text, HasSubstr("first three parts"));
}

TEST(InstalledVersion, NewerIsLeftAloneAtFirst) {
    const VersionAssessment updater = LookBeside(GoodServer(), {3, 1, 0, 0});
    EXPECT_TRUE(updater.served);
    EXPECT_EQ(updater.run.outcome, Outcome::kNothingNewer);
    EXPECT_TRUE(Has(updater.findings, Severity::kWarning, "downgrade"));
}

TEST(InstalledVersion, MissingProgramCannotBeUpdated) {
    const Assessment assessment = Look(GoodServer(), {Installed{}});
    EXPECT_FALSE(assessment.Served());
    EXPECT_EQ(assessment.updaters[0].installed, "none");
    EXPECT_EQ(assessment.updaters[0].run.outcome, Outcome::kNoProgram);
}

TEST(InstalledVersion, OneThatIsNotServedIsEnough) {
    const Assessment assessment =
        Look(GoodServer(), {{Version{3, 0, 11, 0}}, {Version{2, 9, 0, 0}}});
    EXPECT_TRUE(assessment.updaters[0].served);
    EXPECT_FALSE(assessment.Served());
}

}  // namespace
}  // namespace publish_check
