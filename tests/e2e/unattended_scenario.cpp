// The rows of the scenario table once more, on the updater without a window. What a row says of the
// window is the measure: its boxes and texts have to come, in their order, its requests and its
// files have to be the same. A row that leaves an offer alone is installed here; nothing else may
// differ.
#include "e2e/unattended_scenario.h"

#include <algorithm>
#include <optional>
#include <set>

#include "e2e/options.h"
#include "e2e/scenario_run.h"
#include "e2e/text.h"
#include "e2e/unattended_run.h"

namespace swiftpatch::e2e {
namespace {

using scenarios::Line;
using scenarios::Row;

/// What these come to; a later one counts more than one before it.
const std::map<std::string, DWORD>& StatusOfFailure() {
    static const std::map<std::string, DWORD> kStatuses{
        {"no connection", unattended::kNoConnection},
        {"bad link", unattended::kBadServer},
        {"bad animation link", unattended::kBadServer},
        {"timed out", unattended::kTimedOut},
        {"no version", unattended::kBadServer},
        {"cannot write", unattended::kDisk},
        {"no main program", unattended::kDisk},
        {"signature missing", unattended::kNotSigned},
        {"signature invalid", unattended::kNotSigned},
        {"signing key invalid", unattended::kNotSigned},
    };
    return kStatuses;
}

const std::map<std::string, DWORD>& StatusOfBox() {
    static const std::map<std::string, DWORD> kStatuses{
        {"staged build in use", unattended::kDisk},
        {"program in use", unattended::kDisk},
        {"no update file", unattended::kDisk},
        {"not signed", unattended::kNotSigned},
    };
    return kStatuses;
}

constexpr char kOfferShown[] = "lblStatus Click on Install Button.";
constexpr char kInstalledShown[] =
    "lblAnimationMsg You have installed the latest version of q-tolvex.";

const std::map<std::string, DWORD>& StatusOfText() {
    static const std::map<std::string, DWORD> kStatuses{
        {kOfferShown, unattended::kInstalled},
        {kInstalledShown, unattended::kInstalled},
        {"lblAnimationMsg You are running the latest version of q-tolvex",
         unattended::kNothingToDo},
        {"lblStatus No update is required at this time.", unattended::kNothingToDo},
    };
    return kStatuses;
}

/// What the lines call a control of the window.
const std::map<std::string, std::string>& PartOf() {
    static const std::map<std::string, std::string> kParts{{"lblVersion", "version"},
                                                           {"lblAnimationMsg", "message"},
                                                           {"lblStatus", "status"},
                                                           {"lblTolvexVersion", "offer"}};
    return kParts;
}

std::string BoxOf(const Line& line) {
    return scenarios::Trimmed(line.rest.substr(0, line.rest.rfind("->")));
}

std::optional<DWORD> StatusIn(const std::map<std::string, DWORD>& statuses,
                              const std::string& key) {
    const auto found = statuses.find(key);
    return found == statuses.end() ? std::nullopt : std::optional(found->second);
}

/// Then the offer stays, and only a person takes it.
bool WasGoneBackFrom(const Row& row) {
    return std::any_of(row.steps.begin(), row.steps.end(), [](const Line& line) {
        return line.word == "shows" &&
               line.rest.find("You went back from version") != std::string::npos;
    });
}

/// Nothing for a run that ends without a word, because the request for the build failed.
std::optional<DWORD> ExpectedStatus(const Row& row) {
    if (WasGoneBackFrom(row)) {
        return unattended::kNothingToDo;
    }
    std::optional<DWORD> status;
    for (const Line& line : row.steps) {
        const std::optional<DWORD> next =
            line.word == "failure" ? StatusIn(StatusOfFailure(), line.rest)
            : line.word == "box"   ? StatusIn(StatusOfBox(), BoxOf(line))
            : line.word == "shows" ? StatusIn(StatusOfText(), line.rest)
                                   : std::nullopt;
        // The window says that all is well after a copy that failed, too.
        const bool failedCopy = status == unattended::kDisk && line.rest == kInstalledShown;
        if (next && !failedCopy) {
            status = next;
        }
    }
    // What is wrong with a server is told in the report: it is there, so it is no connection that
    // is missing.
    const bool reported = std::any_of(row.steps.begin(), row.steps.end(),
                                      [](const Line& line) { return line.word == "report"; });
    return reported && status == unattended::kNoConnection ? unattended::kBadServer : status;
}

bool HasStep(const Row& row, const std::string& word, const std::string& rest) {
    return std::any_of(row.steps.begin(), row.steps.end(),
                       [&](const Line& line) { return line.word == word && line.rest == rest; });
}

/// Rows in which a person does something else than wait, install and leave, or something happens at
/// a moment that only the window has, or another program is in the way.
bool CanBePlayed(const Row& row) {
    static const std::set<std::string> kSteps{"box",    "failure", "shows",  "caption", "sees",
                                              "hidden", "report",  "untick", "ends",    "press"};
    static const std::set<std::string> kPresses{"cmdClose", "cmdInstall"};
    const bool played = std::all_of(row.steps.begin(), row.steps.end(), [](const Line& line) {
        return kSteps.count(line.word) != 0 &&
               (line.word != "press" || kPresses.count(line.rest) != 0);
    });
    const bool alone = std::none_of(row.given.begin(), row.given.end(),
                                    [](const Line& line) { return line.word == "running"; });
    const bool quiet = std::none_of(row.checks.begin(), row.checks.end(),
                                    [](const Line& line) { return line.word == "started"; });
    const bool forward = WasGoneBackFrom(row) && HasStep(row, "press", "cmdInstall");
    return row.onProgram && played && alone && quiet && !forward;
}

std::string JsonText(const std::string& text) {
    std::string line;
    for (const char letter : text) {
        const bool blank = letter == ' ' || letter == '\r' || letter == '\n';
        if (blank) {
            line += line.empty() || line.back() == ' ' ? "" : " ";
        } else {
            line += letter == '\\' || letter == '"' ? std::string("\\") + letter
                                                    : std::string(1, letter);
        }
    }
    return scenarios::Trimmed(line);
}

class UnattendedScenario : public ScenarioRun {
public:
    using ScenarioRun::ScenarioRun;

private:
    void Play() override;
    void ExpectLines();
    std::string Expected(const Line& line);
    void ExpectResult();
    void ExpectFilesOf(const Line& line);

    std::vector<std::string> lines_;
    DWORD status_ = 0;
};

void UnattendedScenario::Play() {
    folder_->CopyIn(TestOptions().unattended, "swiftpatch-unattended.exe");
    if (!Prepare()) {
        return;
    }
    before_ = folder_->Take();
    status_ = RunUnattended(folder_->File("swiftpatch-unattended.exe"), L"--json", lines_);
    LetGo();
    ExpectResult();
    ExpectLines();
    for (const Line& line : row_.checks) {
        const bool replaced =
            status_ == unattended::kInstalled && line.rest.find("tolvex.exe =") == 0;
        if (line.word == "files") {
            ExpectFilesOf(line);
        } else if (!replaced) {
            Do(line);
        }
    }
    if (HasFailure()) {
        for (const std::string& line : lines_) {
            std::cout << line << "\n";
        }
    }
}

void UnattendedScenario::ExpectResult() {
    if (const std::optional<DWORD> expected = ExpectedStatus(row_)) {
        EXPECT_EQ(status_, *expected);
    } else {
        EXPECT_TRUE(status_ == unattended::kNoConnection || status_ == unattended::kBadServer ||
                    status_ == unattended::kTimedOut)
            << status_;
    }
}

/// A part of the line that stands for a step; empty where none does.
std::string UnattendedScenario::Expected(const Line& line) {
    if (line.word == "box" || line.word == "failure") {
        const scenarios::Wording wording =
            line.word == "box" ? table_.Box(BoxOf(line)) : table_.Failure(line.rest);
        return "\"title\":\"" + JsonText(wording.title) + "\",\"text\":\"" +
               JsonText(WithNames(wording.text));
    }
    if (line.word != "shows") {
        return {};
    }
    std::string text = line.rest;
    const auto part = PartOf().find(scenarios::TakeWord(text));
    if (part == PartOf().end()) {
        return {};
    }
    const std::string shown = JsonText(WithNames(scenarios::Unescaped(text)));
    return shown.empty() ? "" : "\"part\":\"" + part->second + "\",\"text\":\"" + shown + "\"";
}

void UnattendedScenario::ExpectLines() {
    // A text of the window is looked for from the last question on: labels change in an order of
    // their own, and a text that stays is told once.
    auto after = lines_.begin();
    for (const Line& line : row_.steps) {
        const std::string part = Expected(line);
        if (part.empty()) {
            continue;
        }
        const bool question = line.word != "shows";
        const auto from = question ? after : lines_.begin();
        const auto found = std::find_if(from, lines_.end(), [&part](const std::string& said) {
            return said.find(part) != std::string::npos;
        });
        if (found == lines_.end()) {
            ADD_FAILURE_AT(line.file.c_str(), line.number) << "not said: " << part;
        } else if (question) {
            after = found + 1;
        }
    }
}

/// As the row says; and where the row left the offer alone, the program and its backup.
void UnattendedScenario::ExpectFilesOf(const Line& line) {
    std::vector<std::string> expected =
        line.rest == "unchanged" ? std::vector<std::string>() : scenarios::SplitAt(line.rest, ',');
    std::vector<std::string> happened = Differences(before_, folder_->Take());
    if (status_ == unattended::kInstalled && !HasStep(row_, "shows", kInstalledShown)) {
        EXPECT_TRUE(folder_->Read("tolvex.exe") == folder_->Read("tolvex30.exe"));
        std::erase_if(happened, [](const std::string& each) {
            return each == "changed tolvex.exe" || each == "created tolvex.exe" ||
                   each.find("created tolvex.3.") == 0 || each.find("created tolvex.2.") == 0;
        });
    }
    std::sort(expected.begin(), expected.end());
    std::sort(happened.begin(), happened.end());
    EXPECT_EQ(happened, expected) << line.Place();
}

}  // namespace

void RegisterUnattendedScenarios() {
    for (const Row& row : ScenarioTable().Rows()) {
        if (CanBePlayed(row)) {
            ::testing::RegisterTest("UnattendedScenario", row.name.c_str(), nullptr, nullptr,
                                    row.line.file.c_str(), row.line.number,
                                    [&row]() -> ::testing::Test* {
                                        return new UnattendedScenario(ScenarioTable(), row);
                                    });
        }
    }
}

}  // namespace swiftpatch::e2e
