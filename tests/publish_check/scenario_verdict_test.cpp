// The rows of the scenario table pin what the real program does, and the tests of the real program
// demand it of it, one by one. Here the same rows are demanded of publish-check: each is turned
// into the server and the machine that it describes, and what publish-check finds has to be what
// the row says that the user sees and the server is asked.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "publish_check/assessment.h"
#include "publish_check/outcome.h"
#include "publish_check/sample_server.h"
#include "publish_check/scenario_state.h"

namespace publish_check {
namespace {

using swiftpatch::scenarios::Line;
using swiftpatch::scenarios::Row;
using swiftpatch::scenarios::Table;

namespace words = swiftpatch::scenarios;

constexpr std::size_t kFewestRows = 30;

/// What the row's texts mean, by the line that tells the outcomes apart.
Outcome PinnedOutcome(const Row& row) {
    static const std::map<std::string, Outcome> kOutcomes{
        {"failure no connection", Outcome::kNoConnection},
        {"failure bad link", Outcome::kBadLink},
        {"failure bad animation link", Outcome::kBadAnimationLink},
        {"failure timed out", Outcome::kBrokenDownload},
        {"failure no version", Outcome::kNoVersion},
        {"failure no main program", Outcome::kNoProgram},
        {"failure signature missing", Outcome::kSignatureMissing},
        {"failure signature invalid", Outcome::kSignatureInvalid},
        {"failure signing key invalid", Outcome::kSigningKeyInvalid},
        {"shows lblStatus No update is required at this time.", Outcome::kNothingNewer},
        {"shows lblStatus Click on Install Button.", Outcome::kOffered},
        {"shows lblAnimationMsg You are running the latest version of q-tolvex", Outcome::kLatest},
    };
    Outcome outcome = Outcome::kFailed;
    for (const Line& line : row.steps) {
        const auto found = kOutcomes.find(line.word + " " + line.rest);
        if (found != kOutcomes.end()) {
            outcome = found->second;
        }
    }
    return outcome;
}

std::string WithNames(std::string text, const ScenarioState& state) {
    text = words::Replaced(text, "{folder}", "C:\\Tolvex");
    return words::Replaced(text, "{server}", state.server.address);
}

class RowTest : public testing::Test {
public:
    RowTest(const Table& table, const Row& row, ScenarioState state)
        : table_(table), row_(row), state_(std::move(state)) {}

private:
    void TestBody() override {
        const FieldRun run = state_.machine.Run(PublishedFolder(state_.server));
        EXPECT_STREQ(NameOf(run.outcome), NameOf(PinnedOutcome(row_))) << row_.purpose;
        CheckBoxes(run);
        CheckFailures(run);
        CheckTexts(run);
        CheckRequests(run);
        if (state_.plain) {
            CheckAssessment(run);
        }
    }

    void CheckBoxes(const FieldRun& run) const {
        std::vector<std::string> boxes;
        for (const Line& line : row_.steps) {
            if (line.word == "box") {
                const std::string call = line.rest.substr(0, line.rest.rfind("->"));
                boxes.push_back(WithNames(table_.Box(call).text, state_));
            }
        }
        EXPECT_EQ(run.boxes, boxes);
    }

    void CheckFailures(const FieldRun& run) const {
        std::vector<std::pair<std::string, std::string>> failures;
        for (const Line& line : row_.steps) {
            if (line.word == "failure") {
                const words::Wording wording = table_.Failure(line.rest);
                failures.emplace_back(wording.title, WithNames(wording.text, state_) + "\r\n");
            }
        }
        EXPECT_EQ(run.failures, failures);
    }

    /// The last text that a row pins of each control.
    void CheckTexts(const FieldRun& run) const {
        std::map<std::string, std::string> pinned;
        for (const Line& line : row_.steps) {
            std::string rest = line.rest;
            if (line.word == "caption") {
                pinned[line.word] = rest;
            } else if (line.word == "shows") {
                const std::string control = words::TakeWord(rest);
                pinned[control] = words::Unescaped(rest);
            }
        }
        const std::map<std::string, std::string> shown{{"lblStatus", run.status},
                                                       {"lblAnimationMsg", run.message},
                                                       {"lblTolvexVersion", run.available},
                                                       {"caption", run.caption}};
        for (const auto& [control, text] : pinned) {
            const auto found = shown.find(control);
            if (found != shown.end()) {
                EXPECT_EQ(found->second, text) << control;
            }
        }
    }

    /// "HEAD name+" stands for one or more; the platform may ask again by itself.
    void CheckRequests(const FieldRun& run) const {
        for (const Line& line : row_.checks) {
            if (line.word == "requests") {
                std::vector<std::string> requests = words::SplitAt(line.rest, ',');
                for (std::string& request : requests) {
                    request = words::Replaced(request, "+", "");
                }
                EXPECT_EQ(run.requests, requests);
            }
        }
    }

    /// What is said to the publisher rests on the same run.
    void CheckAssessment(const FieldRun& run) const {
        const Assessment assessment =
            Assess(state_.server, {*state_.plain}, LookTime(), state_.keys);
        EXPECT_STREQ(NameOf(assessment.updaters[0].run.outcome), NameOf(run.outcome));
        EXPECT_EQ(assessment.updaters[0].run.requests, run.requests);
        const bool lost = run.outcome != Outcome::kOffered &&
                          run.outcome != Outcome::kNothingNewer && run.outcome != Outcome::kLatest;
        if (lost) {
            EXPECT_FALSE(assessment.Served());
        }
    }

    const Table& table_;
    const Row& row_;
    ScenarioState state_;
};

std::size_t RegisterRows() {
    static const Table kTable(SWIFTPATCH_SCENARIOS);
    std::size_t count = 0;
    for (const Row& row : kTable.Rows()) {
        const auto state = StateOf(row);
        if (state) {
            ++count;
            testing::RegisterTest("ScenarioVerdict", row.name.c_str(), nullptr, nullptr,
                                  row.line.file.c_str(), row.line.number,
                                  [&row, state = *state]() -> testing::Test* {
                                      return new RowTest(kTable, row, state);
                                  });
        }
    }
    return count;
}

const std::size_t kRows = RegisterRows();

TEST(ScenarioVerdicts, AreManyEnough) { EXPECT_GE(kRows, kFewestRows); }

}  // namespace
}  // namespace publish_check
