#include "e2e/scenario_run.h"

#include <iostream>

#include "e2e/options.h"
#include "e2e/text.h"

namespace swiftpatch::e2e {

using scenarios::Line;
using scenarios::Row;
using scenarios::Table;

namespace {

constexpr milliseconds kLongestStart{150000};

}  // namespace

const std::map<std::string, ScenarioRun::Action>& ScenarioRun::Actions() {
    static const std::map<std::string, Action> kActions{
        {"offers", &ScenarioRun::Offers},
        {"installed", &ScenarioRun::Installed},
        {"staged", &ScenarioRun::Staged},
        {"animation", &ScenarioRun::Animation},
        {"settings", &ScenarioRun::Settings},
        {"https", &ScenarioRun::SpeakHttps},
        {"keys", &ScenarioRun::Keys},
        {"file", &ScenarioRun::PlaceFile},
        {"folder", &ScenarioRun::PlaceFolder},
        {"held", &ScenarioRun::Hold},
        {"locked", &ScenarioRun::Lock},
        {"running", &ScenarioRun::RunElsewhere},
        {"records", &ScenarioRun::Record},
        {"box", &ScenarioRun::SeeBox},
        {"failure", &ScenarioRun::SeeFailure},
        {"shows", &ScenarioRun::SeeText},
        {"caption", &ScenarioRun::SeeCaption},
        {"sees", &ScenarioRun::SeeControl},
        {"hidden", &ScenarioRun::SeeHidden},
        {"report", &ScenarioRun::SeeReport},
        {"download", &ScenarioRun::SeePercentage},
        {"press", &ScenarioRun::PressButton},
        {"untick", &ScenarioRun::Untick},
        {"corner", &ScenarioRun::CloseByCorner},
        {"asked", &ScenarioRun::AwaitRequests},
        {"change", &ScenarioRun::ChangeFile},
        {"ends", &ScenarioRun::AwaitEnd},
        {"requests", &ScenarioRun::CheckRequests},
        {"files", &ScenarioRun::CheckFiles},
        {"content", &ScenarioRun::CheckContent},
        {"started", &ScenarioRun::CheckStarted},
    };
    return kActions;
}

void ScenarioRun::TestBody() {
    Play();
    if (HasFailure()) {
        if (updater_) {
            std::cout << "In the end " << updater_->Describe() << "\n";
        }
        std::cout << "The row " << row_.name << " of " << row_.line.Place() << ":\n  "
                  << row_.purpose << "\n";
        const std::filesystem::path folder = TestOptions().scratch / "screenshots";
        const std::filesystem::path file = folder / (row_.name + ".png");
        if (picture_) {
            std::filesystem::create_directories(folder);
            picture_->Save(file);
            std::cout << "The screen: " << PathText(file) << "\n";
        }
        if (updater_) {
            // One failure is enough; the transcript follows.
            updater_->Running().Kill();
        }
    }
    LetGo();
    running_.reset();
}

bool ScenarioRun::Prepare() {
    Installed("3.0.11.0");
    for (const Line& line : row_.given) {
        Do(line, Actions());
    }
    if (IsSkipped() || HasFailure()) {
        return false;
    }
    PrepareServer();
    return true;
}

void ScenarioRun::LetGo() {
    held_.clear();
    locked_.reset();
}

void ScenarioRun::Play() {
    if (!Prepare()) {
        return;
    }
    Start();
    // On a machine with much else to do the start alone can take longer than any later stage.
    WaitUntil(
        [this] {
            return updater_->Window(kMain) != nullptr || updater_->MessageBoxNow() ||
                   !updater_->Running().Running();
        },
        kLongestStart);
    for (const Line& line : row_.steps) {
        Do(line, Actions());
        if (HasFailure()) {
            return;
        }
    }
    LetGo();
    for (const Line& line : row_.checks) {
        Do(line, Actions());
    }
}

void ScenarioRun::Do(const Line& line, const std::map<std::string, Action>& actions) {
    const testing::ScopedTrace place(line.file.c_str(), line.number, line.word + " " + line.rest);
    try {
        const auto found = actions.find(line.word);
        if (found == actions.end()) {
            throw DriveError("cannot be done on the real program");
        }
        (this->*found->second)(line.rest);
    } catch (const std::exception& error) {
        ADD_FAILURE_AT(line.file.c_str(), line.number) << error.what();
    }
    if (HasFailure() && updater_ && updater_->Running().Running()) {
        KeepPicture();
    }
}

void ScenarioRun::KeepPicture() { picture_ = std::make_unique<ScreenPicture>(); }

std::string ScenarioRun::WithNames(std::string text) {
    if (text.find("{nobody}") != std::string::npos && !nobody_) {
        nobody_.emplace();
    }
    if (text.find("{secure}") != std::string::npos) {
        if (!secure_) {
            TrustOwnAuthority();
            secure_.emplace(server_.Port(), "good");
        }
        text = scenarios::Replaced(text, "{secure}", secure_->Host());
    }
    text = scenarios::Replaced(text, "{folder}", FolderText());
    text = scenarios::Replaced(text, "{server}", NamedFolder());
    text = scenarios::Replaced(text, "{host}", server_.Host());
    text = scenarios::Replaced(text, "{other}", other_.Host());
    return nobody_ ? scenarios::Replaced(text, "{nobody}", nobody_->Host()) : text;
}

std::string ScenarioRun::NamedFolder() const {
    return named_ ? "https://" + named_->Host() + "/upd/" : ServerFolder();
}

const Table& ScenarioTable() {
    // Lives as long as the tests, which refer to it.
    static const Table kTable(TestOptions().scenarios);
    return kTable;
}

void RegisterScenarios() {
    for (const Row& row : ScenarioTable().Rows()) {
        if (row.onProgram) {
            ::testing::RegisterTest(
                "Scenario", row.name.c_str(), nullptr, nullptr, row.line.file.c_str(),
                row.line.number,
                [&row]() -> ::testing::Test* { return new ScenarioRun(ScenarioTable(), row); });
        }
    }
}

}  // namespace swiftpatch::e2e
