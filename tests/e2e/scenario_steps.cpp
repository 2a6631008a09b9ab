// What is there before a scenario, what its user sees and does, and what is looked at in the end.
#include <algorithm>

#include "e2e/options.h"
#include "e2e/scenario_run.h"
#include "e2e/text.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kStage{60000};
constexpr milliseconds kSoon{30000};

int ButtonOf(const std::string& name) {
    static const std::map<std::string, int> kButtons{{"OK", IDOK}, {"Yes", IDYES}, {"No", IDNO}};
    return kButtons.at(name);
}

std::string NameOfRequest(const Request& request) {
    const std::string folder = "/upd/";
    const bool ours = BeginsWith(request.target, folder);
    return ours ? request.target.substr(folder.size()) : request.target;
}

// "GET tolvex30.exe+" stands for one such request or several in a row.
bool Matches(const std::vector<std::string>& wanted, const std::vector<std::string>& seen) {
    auto next = seen.begin();
    for (std::string request : wanted) {
        const bool several = !request.empty() && request.back() == '+';
        request.resize(request.size() - (several ? 1 : 0));
        if (next == seen.end() || *next != request) {
            return false;
        }
        ++next;
        while (several && next != seen.end() && *next == request) {
            ++next;
        }
    }
    return next == seen.end();
}

std::vector<std::string> NamesIn(const std::string& list, const std::string& none) {
    return list == none ? std::vector<std::string>() : scenarios::SplitAt(list, ',');
}

}  // namespace

void ScenarioRun::Installed(const std::string& version) {
    if (version == "nothing") {
        std::filesystem::remove(folder_->File("tolvex.exe"));
    } else {
        Install(version);
    }
}

void ScenarioRun::Staged(const std::string& versionAndTime) {
    std::string time = versionAndTime;
    const std::string version = scenarios::TakeWord(time);
    Stage(version, UtcTime(scenarios::TimeIn(time).time_since_epoch()));
}

void ScenarioRun::Animation(const std::string& state) {
    std::filesystem::remove(folder_->File("filecopy.avi"));
    if (state != "missing") {
        folder_->Write("filecopy.avi", Content(state));
    }
}

void ScenarioRun::Settings(const std::string& contents) {
    std::filesystem::remove(folder_->File("tolvex.dta.txt"));
    if (contents != "missing") {
        folder_->Write("tolvex.dta.txt", WithNames(scenarios::Unescaped(contents)));
    }
}

void ScenarioRun::SpeakHttps(const std::string& certificate) {
    TrustOwnAuthority();
    named_.emplace(server_.Port(), certificate);
    folder_->WriteSettings(NamedFolder());
}

void ScenarioRun::Keys(const std::string& names) {
    folder_->WriteSettings(NamedFolder(), "SigningKeys=" + scenarios::KeysOf(names) + "\r\n");
    signed_ = true;
}

void ScenarioRun::PlaceFile(const std::string& nameAndContent) {
    const auto [name, content] = scenarios::NameAndContent(nameAndContent);
    folder_->Write(name, Content(content));
}

void ScenarioRun::PlaceFolder(const std::string& name) {
    std::filesystem::create_directory(folder_->File(name));
}

void ScenarioRun::Hold(const std::string& name) {
    held_.push_back(std::make_unique<HeldFile>(folder_->File(name)));
}

void ScenarioRun::Lock(const std::string&) {
    locked_ = std::make_unique<ReadOnlyFolder>(folder_->Path());
    if (!locked_->Effective()) {
        GTEST_SKIP() << "this system lets this user write everywhere";
    }
}

// Outside the application folder, so that its file is not in the way.
void ScenarioRun::RunElsewhere(const std::string& arguments) {
    elsewhere_ =
        std::make_unique<AppFolder>(TestOptions().scratch / "other", TestOptions().updater);
    elsewhere_->Write("tolvex.exe", Build("3.0.11.0"));
    running_ = std::make_unique<MainProgram>(
        elsewhere_->File("tolvex.exe"),
        L"--record" + Wide(arguments == "yes" ? "" : " " + arguments));
}

void ScenarioRun::SeeBox(const std::string& nameAndAnswer) {
    const std::size_t arrow = nameAndAnswer.rfind("->");
    if (arrow == std::string::npos) {
        throw DriveError("a box wants an answer: -> OK");
    }
    const scenarios::Wording wording =
        table_.Box(scenarios::Trimmed(nameAndAnswer.substr(0, arrow)));
    AnswerBox(WithNames(wording.text),
              ButtonOf(scenarios::Trimmed(nameAndAnswer.substr(arrow + 2))), wording.title);
}

void ScenarioRun::SeeFailure(const std::string& name) {
    const scenarios::Wording wording = table_.Failure(name);
    AnswerFailure(wording.title, WithNames(wording.text));
}

void ScenarioRun::SeeText(const std::string& controlAndText) {
    std::string text = controlAndText;
    const Control control = MainControl(scenarios::TakeWord(text));
    updater_->AwaitWindow(kMain, kStage);
    updater_->AwaitText(control, WithNames(scenarios::Unescaped(text)), kStage);
}

void ScenarioRun::SeeCaption(const std::string& text) {
    Await(
        "the caption " + text, [&] { return updater_->Caption(kMain) == text; }, kSoon);
}

void ScenarioRun::SeeControl(const std::string& control) {
    const Control wanted = MainControl(control);
    Await(
        "a visible " + control, [&] { return updater_->Visible(wanted); }, kStage);
    if (BeginsWith(control, "cmd")) {
        updater_->AwaitEnabled(wanted, kStage);
    }
}

void ScenarioRun::SeeHidden(const std::string& control) {
    const Control wanted = MainControl(control);
    Await(
        "a hidden " + control, [&] { return !updater_->Visible(wanted); }, kSoon);
}

void ScenarioRun::SeeReport(const std::string& text) {
    const std::string part = WithNames(scenarios::Unescaped(text));
    const bool there =
        WaitUntil([&] { return updater_->Text(kTxtDebug).find(part) != std::string::npos; }, kSoon);
    if (!there) {
        throw DriveError("not in the report: " + OneLine(updater_->Text(kTxtDebug)));
    }
}

void ScenarioRun::SeePercentage(const std::string& number) { AwaitPercentage(std::stoi(number)); }

void ScenarioRun::PressButton(const std::string& control) {
    const Control button = MainControl(control);
    updater_->AwaitEnabled(button, kSoon);
    KeepPicture();
    updater_->Press(button);
}

void ScenarioRun::Untick(const std::string&) { SwitchOffStart(); }

void ScenarioRun::CloseByCorner(const std::string&) {
    KeepPicture();
    updater_->CloseByCorner(kMain);
}

void ScenarioRun::AwaitRequests(const std::string& count) {
    const std::size_t wanted = std::stoul(count);
    Await(
        count + " requests", [&] { return server_.Requests().size() >= wanted; }, kStage);
}

void ScenarioRun::ChangeFile(const std::string& nameAndContent) {
    const auto [name, content] = scenarios::NameAndContent(nameAndContent);
    if (content == "nothing") {
        std::filesystem::remove(folder_->File(name));
    } else {
        folder_->Write(name, Content(content));
    }
}

void ScenarioRun::AwaitEnd(const std::string&) { updater_->AwaitEnd(kSoon); }

std::vector<std::string> ScenarioRun::RequestsSeen() const {
    std::vector<std::pair<SteadyTime, std::string>> seen;
    for (const Request& request : server_.Requests()) {
        seen.emplace_back(request.time, request.method + " " + NameOfRequest(request));
    }
    for (const Request& request : other_.Requests()) {
        seen.emplace_back(request.time, request.method + " other:" + NameOfRequest(request));
    }
    std::stable_sort(seen.begin(), seen.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> requests;
    for (const auto& [time, request] : seen) {
        requests.push_back(request);
    }
    return requests;
}

void ScenarioRun::CheckRequests(const std::string& requests) {
    const std::vector<std::string> wanted = NamesIn(requests, "none");
    const std::vector<std::string> seen = RequestsSeen();
    EXPECT_TRUE(Matches(wanted, seen)) << "the server saw " << ::testing::PrintToString(seen);
}

void ScenarioRun::CheckFiles(const std::string& differences) {
    ExpectFiles(NamesIn(differences, "unchanged"));
}

void ScenarioRun::CheckContent(const std::string& nameAndContent) {
    auto [name, content] = scenarios::NameAndContent(nameAndContent);
    if (!folder_->Has(name)) {
        throw DriveError("there is no " + name);
    }
    const std::string bytes = folder_->Read(name);
    if (scenarios::TakeBeginning(content, "a beginning of")) {
        EXPECT_EQ(bytes.size(), std::min(bytes.size(), Content(content).size()));
        EXPECT_TRUE(BeginsWith(Content(content), bytes)) << bytes.size() << " bytes";
    } else {
        EXPECT_TRUE(bytes == Content(content)) << bytes.size() << " bytes";
    }
}

void ScenarioRun::CheckStarted(const std::string& yesOrNo) {
    if (yesOrNo == "yes") {
        MainProgram(folder_->Path(), kSoon).Close();
    } else {
        ExpectNothingStarted();
    }
}

std::string ScenarioRun::Content(const std::string& description) const {
    return scenarios::ContentOf(description,
                                [this](const std::string& version) { return Build(version); });
}

}  // namespace swiftpatch::e2e
