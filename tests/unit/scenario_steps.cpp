// What the user of a scenario sees and does, and what is looked at in the end.
#include "install/frmRunning.h"
#include "unit/scenario_run.h"

namespace swiftpatch {

using headless::Quoted;
using scenarios::Line;

namespace {

constexpr std::int64_t kLongestStage = 60000;  // Milliseconds on the machine's clock.

MsgBoxAnswer AnswerIn(const std::string& name) {
    return name == "Yes"  ? MsgBoxAnswer::kYes
           : name == "No" ? MsgBoxAnswer::kNo
                          : MsgBoxAnswer::kOk;
}

std::vector<std::string> NamesIn(const std::string& list, const std::string& none) {
    return list == none ? std::vector<std::string>() : scenarios::SplitAt(list, ',');
}

}  // namespace

void ScenarioRun::ScriptUser() {
    for (const Line& line : row_.steps) {
        if (line.word == "box") {
            const std::size_t arrow = line.rest.rfind("->");
            const scenarios::Wording wording = table_.Box(line.rest.substr(0, arrow));
            world.user.Answer(WithNames(wording.text),
                              AnswerIn(scenarios::Trimmed(line.rest.substr(arrow + 2))));
        } else if (line.word == "failure") {
            const scenarios::Wording wording = table_.Failure(line.rest);
            const std::string text = WithNames(wording.text) + "\r\n";
            world.user.AtDialog("frmRunning", [wording, text](Form& form) {
                auto& dialog = dynamic_cast<frmRunning&>(form);
                EXPECT_EQ(dialog.Caption.Get(), wording.title);
                EXPECT_EQ(dialog.message, text);
                dialog.cmdExit.RaiseClick();
            });
        }
    }
}

std::string ScenarioRun::WithNames(std::string text) {
    text = scenarios::Replaced(text, "{folder}", "C:\\Tolvex");
    return scenarios::Replaced(text, "{server}", "tolvex.example/files/");
}

bool ScenarioRun::PumpUntil(const std::function<bool()>& condition) {
    const std::int64_t end = world.uptime + kLongestStage;
    while (!condition() && !world.RunOver() && world.uptime < end) {
        world.PumpFor(10);
    }
    return condition();
}

ScenarioRun::Part ScenarioRun::PartOf(const std::string& name) {
    frmSwiftPatch& w = Window();
    const std::map<std::string, Part> parts{
        {"lblStatus", {&w.lblStatus, &w.lblStatus.Caption}},
        {"lblAnimationMsg", {&w.lblAnimationMsg, &w.lblAnimationMsg.Caption}},
        {"lblTolvexVersion", {&w.lblTolvexVersion, &w.lblTolvexVersion.Caption}},
        {"cmdInstall", {&w.cmdInstall, &w.cmdInstall.Caption}},
        {"cmdRetry", {&w.cmdRetry, &w.cmdRetry.Caption}},
        {"cmdClose", {&w.cmdClose, &w.cmdClose.Caption}},
        {"cmdGoBack", {&w.cmdGoBack, &w.cmdGoBack.Caption}},
        {"Animation1", {&w.Animation1, nullptr}},
        {"ProgressBar1", {&w.ProgressBar1, nullptr}},
        {"fraMessages", {&w.fraMessages, nullptr}}};
    return parts.at(name);
}

void ScenarioRun::CheckBox(const std::string& nameAndAnswer) {
    const scenarios::Wording wording =
        table_.Box(nameAndAnswer.substr(0, nameAndAnswer.rfind("->")));
    const std::string shown =
        Quoted(wording.title) + " " + Quoted(WithNames(wording.text)) + " -> ";
    EXPECT_TRUE(PumpUntil([&] {
        for (const std::string& box : world.trace.StartingWith("MsgBox ")) {
            if (box.find(shown) != std::string::npos) {
                return true;
            }
        }
        return false;
    }));
}

void ScenarioRun::SeeText(const std::string& controlAndText) {
    std::string text = controlAndText;
    const Part part = PartOf(scenarios::TakeWord(text));
    text = WithNames(scenarios::Unescaped(text));
    EXPECT_TRUE(PumpUntil([&] { return part.text->Get() == text; }))
        << "it shows " << Quoted(part.text->Get());
}

void ScenarioRun::SeeCaption(const std::string& text) {
    EXPECT_TRUE(PumpUntil([&] { return Window().Caption.Get() == text; }));
}

void ScenarioRun::SeeControl(const std::string& name) {
    const Part part = PartOf(name);
    EXPECT_TRUE(PumpUntil([&] { return part.control->Visible && part.control->Enabled; }));
}

void ScenarioRun::SeeHidden(const std::string& name) {
    const Part part = PartOf(name);
    EXPECT_TRUE(PumpUntil([&] { return !part.control->Visible; }));
}

void ScenarioRun::SeeReport(const std::string& text) {
    EXPECT_NE(Window().txtDebug.Text.Get().find(WithNames(scenarios::Unescaped(text))),
              std::string::npos)
        << Window().txtDebug.Text.Get();
}

void ScenarioRun::Press(const std::string& name) {
    auto& button = static_cast<CommandButton&>(*PartOf(name).control);
    EXPECT_TRUE(PumpUntil([&] { return button.Visible && button.Enabled; }));
    world.Click(Window(), button);
}

void ScenarioRun::Untick(const std::string&) {
    Window().chkRunTolvex.Value = CheckState::kUnchecked;
}

// The only way out of a wait that never ends.
void ScenarioRun::SwitchOff(const std::string& seconds) {
    const std::int64_t milliseconds = std::stoll(seconds) * 1000;
    world.After(milliseconds, [this] { world.EndRun(); });
    world.PumpFor(milliseconds + 1000);
    EXPECT_TRUE(world.RunOver());
}

void ScenarioRun::AwaitEnd(const std::string&) {
    EXPECT_TRUE(PumpUntil([this] { return world.RunOver(); }));
}

std::map<std::string, std::string> ScenarioRun::Files() {
    std::map<std::string, std::string> files;
    for (const std::string& path : world.disk.Names()) {
        files[path.substr(path.rfind('\\') + 1)] = world.disk.Find(path)->bytes;
    }
    return files;
}

void ScenarioRun::CheckRequests(const std::string& requests) {
    std::vector<std::string> seen;
    for (const std::string& request : world.network.Requests()) {
        seen.push_back(scenarios::Replaced(request, kFolder, ""));
    }
    EXPECT_EQ(seen, NamesIn(requests, "none"));
}

void ScenarioRun::CheckFiles(const std::string& differences) {
    const auto after = Files();
    std::map<std::string, std::string> found;
    for (const auto& [name, bytes] : before_) {
        const auto now = after.find(name);
        if (now == after.end()) {
            found[name] = "deleted " + name;
        } else if (now->second != bytes) {
            found[name] = "changed " + name;
        }
    }
    for (const auto& [name, bytes] : after) {
        if (before_.count(name) == 0) {
            found[name] = "created " + name;
        }
    }
    std::vector<std::string> lines;
    for (const auto& [name, line] : found) {
        lines.push_back(line);
    }
    EXPECT_THAT(lines, testing::UnorderedElementsAreArray(NamesIn(differences, "unchanged")));
}

void ScenarioRun::CheckContent(const std::string& nameAndContent) {
    auto [name, content] = scenarios::NameAndContent(nameAndContent);
    const headless::File* file = world.disk.Find(world.PathOf(name));
    ASSERT_TRUE(file != nullptr) << "there is no " << name;
    if (scenarios::TakeBeginning(content, "a beginning of")) {
        EXPECT_TRUE(ScenarioContent(content).starts_with(file->bytes));
    } else {
        EXPECT_TRUE(file->bytes == ScenarioContent(content)) << file->bytes.size() << " bytes";
    }
}

void ScenarioRun::CheckStarted(const std::string& yesOrNo) {
    EXPECT_EQ(!world.trace.StartingWith("ShellExecute").empty(), yesOrNo == "yes");
}

// "120 to 130"
void ScenarioRun::CheckTime(const std::string& limits) {
    std::string most = limits;
    const std::int64_t least = std::stoll(scenarios::TakeWord(most));
    scenarios::TakeBeginning(most, "to");
    EXPECT_GE(seconds_, least);
    EXPECT_LE(seconds_, std::stoll(most));
}

void ScenarioRun::CheckYields(const std::string& count) { EXPECT_GE(pumps_, std::stoll(count)); }

}  // namespace swiftpatch
