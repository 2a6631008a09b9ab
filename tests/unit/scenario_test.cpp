// The rows of the scenario table that run on the machine in memory: what takes too long for the
// real program, and, at hardly any cost, most of the others once more.
#include <chrono>
#include <limits>
#include <map>
#include <utility>

#include "app/shared_state.h"
#include "install/frmRunning.h"
#include "scenarios/table.h"
#include "unit/check_support.h"

namespace swiftpatch {
namespace {

using headless::Quoted;
using scenarios::Answer;
using scenarios::Line;
using scenarios::Row;
using scenarios::Script;
using scenarios::Table;

constexpr char kServerFolder[] = "http://tolvex.example/files/";
constexpr char kServerDate[] = "Wed, 05 Feb 2020 08:12:00 GMT";
constexpr std::int64_t kLongestStage = 60000;  // Milliseconds on the machine's clock.
constexpr std::size_t kLicenceSize = 5000;

std::size_t SizeOf(const std::string& version) {
    static const std::map<std::string, std::size_t> kSizes{
        {"2.9.0.0", 201111},   {"3.0.11.0", 202222},    {"3.0.12.5", 203333},
        {"3.1.0.123", 204444}, {"3.0.40000.1", 205555}, {"none", 206666}};
    return kSizes.at(version);
}

std::string BuildOf(const std::string& version, std::size_t size) {
    return headless::Build(version == "none" ? "" : version, size);
}

std::string Content(std::string description) {
    if (scenarios::TakeBeginning(description, "empty")) {
        return {};
    }
    if (scenarios::TakeBeginning(description, "letters")) {
        return std::string(scenarios::NumberIn(description), 'x');
    }
    if (scenarios::TakeBeginning(description, "first")) {
        const std::size_t size = scenarios::NumberIn(scenarios::TakeWord(description));
        scenarios::TakeBeginning(description, "of");
        return Content(description).substr(0, size);
    }
    const std::string version = scenarios::TakeWord(description);
    const bool otherSize = scenarios::TakeBeginning(description, "as long as");
    return BuildOf(version, SizeOf(otherSize ? description : version));
}

std::pair<std::string, std::string> NameAndContent(const std::string& text) {
    const std::size_t sign = text.find('=');
    return {scenarios::Trimmed(text.substr(0, sign)), scenarios::Trimmed(text.substr(sign + 1))};
}

DateTime TimeIn(const std::string& text) {
    const std::array<int, 6> parts = scenarios::TimeIn(text);
    return MakeDateTime({parts[0], parts[1], parts[2], parts[3], parts[4], parts[5]});
}

MsgBoxAnswer AnswerIn(const std::string& name) {
    return name == "Yes"  ? MsgBoxAnswer::kYes
           : name == "No" ? MsgBoxAnswer::kNo
                          : MsgBoxAnswer::kOk;
}

std::vector<std::string> NamesIn(const std::string& list, const std::string& none) {
    return list == none ? std::vector<std::string>() : scenarios::SplitAt(list, ',');
}

class ScenarioOnTheSimulation : public ProgramTest {
public:
    ScenarioOnTheSimulation(const Table& table, const Row& row) : table_(table), row_(row) {}

private:
    using Action = void (ScenarioOnTheSimulation::*)(const std::string&);

    static const std::map<std::string, Action>& Actions() {
        using Self = ScenarioOnTheSimulation;
        static const std::map<std::string, Action> kActions{
            {"offers", &Self::Offers},         {"installed", &Self::Installed},
            {"staged", &Self::Staged},         {"animation", &Self::Animation},
            {"settings", &Self::Settings},     {"file", &Self::PlaceFile},
            {"clock", &Self::SetClock},        {"zone", &Self::SetZone},
            {"connection", &Self::Connection}, {"patience", &Self::Patience},
            {"shows", &Self::SeeText},         {"caption", &Self::SeeCaption},
            {"sees", &Self::SeeControl},       {"hidden", &Self::SeeHidden},
            {"report", &Self::SeeReport},      {"press", &Self::Press},
            {"untick", &Self::Untick},         {"lasts", &Self::CheckTime},
            {"ends", &Self::AwaitEnd},         {"requests", &Self::CheckRequests},
            {"files", &Self::CheckFiles},      {"content", &Self::CheckContent},
            {"yields", &Self::CheckYields},    {"box", &Self::CheckBox},
            {"failure", &Self::Pass},          {"off", &Self::SwitchOff},
        };
        return kActions;
    }

    void TestBody() override {
        Installed("3.0.11.0");
        for (const Line& line : row_.given) {
            Do(line);
        }
        PrepareServer();
        ScriptUser();
        before_ = Files();
        world.Dispatch([this] { Window().Show(); });
        if (endless_) {
            Window().Inet1.RequestTimeout = std::numeric_limits<std::int32_t>::max();
        }
        const std::int64_t pumps = world.pumps;
        const std::int64_t start = world.uptime;
        for (const Line& line : row_.steps) {
            Do(line);
            if (HasFatalFailure()) {
                break;
            }
        }
        pumps_ = world.pumps - pumps;
        seconds_ = (world.uptime - start) / 1000;
        for (const Line& line : row_.checks) {
            Do(line);
        }
        if (HasFailure()) {
            std::cout << row_.name << ": " << row_.purpose << "\n" << Joined(Steps()) << "\n";
        }
    }

    void Do(const Line& line) {
        const testing::ScopedTrace place(line.file.c_str(), line.number,
                                         line.word + " " + line.rest);
        const auto found = Actions().find(line.word);
        ASSERT_TRUE(found != Actions().end()) << "cannot be done on the simulation";
        (this->*found->second)(line.rest);
    }

    // What is there before the program starts.

    void Offers(const std::string& version) { offered_ = version; }

    void Installed(const std::string& version) {
        world.disk.Remove(world.PathOf("tolvex.exe"));
        if (version != "nothing") {
            world.AddFile("tolvex.exe", Content(version));
        }
    }

    void Staged(const std::string& versionAndTime) {
        std::string time = versionAndTime;
        const std::string version = scenarios::TakeWord(time);
        world.AddFile("tolvex30.exe", Content(version),
                      AddMinutes(TimeIn(time), world.utcOffsetMinutes));
    }

    void Animation(const std::string& state) {
        world.disk.Remove(world.PathOf("filecopy.avi"));
        if (state != "missing") {
            world.AddFile("filecopy.avi", Content(state));
        }
    }

    // Only what does not change the folder has a meaning here.
    void Settings(const std::string& contents) {
        ASSERT_NE(contents.find("InstallAtOnce=1"), std::string::npos);
        shared.InstallAtOnce = true;
    }

    void PlaceFile(const std::string& nameAndContent) {
        const auto [name, content] = NameAndContent(nameAndContent);
        const headless::File* old = world.disk.Find(world.PathOf(name));
        world.AddFile(name, Content(content), old == nullptr ? DateTime{} : old->changed);
    }

    void SetClock(const std::string& time) { world.SetLocalTime(TimeIn(time)); }
    void SetZone(const std::string& minutes) { world.utcOffsetMinutes = std::stoi(minutes); }

    void Connection(const std::string& kind) {
        constexpr std::uint32_t kRemoteAccess = 0x20;
        if (kind == "none") {
            world.machine.connected = false;
        } else {
            world.machine.connectionFlags |= kRemoteAccess;
        }
    }

    void Patience(const std::string&) { endless_ = true; }

    // The server.

    void PrepareServer() {
        for (const char* name : {"tolvex30.exe", "LICENSE.TXT", "filecopy.avi"}) {
            for (const char* method : {"HEAD", "GET"}) {
                world.network.Answer(Url(method, name), ReplyTo(name, {}));
            }
        }
        std::map<std::string, std::map<std::size_t, headless::Reply>> inTurns;
        for (const Script& script : row_.scripts) {
            const std::string request = Url(script.method, script.name);
            const headless::Reply reply = ReplyTo(script.name, script.answer);
            if (script.turn == 0) {
                world.network.Answer(request, reply);
            } else {
                inTurns[request][script.turn] = reply;
            }
        }
        for (const auto& [request, replies] : inTurns) {
            const std::string name = request.substr(request.rfind('/') + 1);
            for (std::size_t turn = 1; turn <= replies.rbegin()->first; ++turn) {
                const auto found = replies.find(turn);
                world.network.AnswerNext(
                    request, found == replies.end() ? ReplyTo(name, {}) : found->second);
            }
        }
    }

    static std::string Url(const std::string& method, const std::string& name) {
        return method + " " + kServerFolder + name;
    }

    std::string UsualBody(const std::string& name) const {
        if (name == "LICENSE.TXT") {
            return std::string(kLicenceSize, 'L');
        }
        return name == "filecopy.avi" ? std::string(20000, 'a') : Content(offered_);
    }

    headless::Reply ReplyTo(const std::string& name, const Answer& answer) const {
        std::string body = answer.build ? Content(*answer.build) : UsualBody(name);
        if (answer.letters) {
            body = std::string(*answer.letters, 'x');
        }
        body.resize(std::min(body.size(), answer.first.value_or(body.size())));
        const std::string status = answer.statusLine.value_or("HTTP/1.1 200 OK");
        headless::Reply reply;
        reply.status = std::stoi(status.substr(status.find(' ') + 1));
        reply.headers = status + "\r\n";
        if (!answer.withoutLength) {
            reply.headers +=
                "Content-length: " + answer.length.value_or(std::to_string(body.size())) + "\r\n";
        }
        if (!answer.withoutDate && (answer.date || name == "tolvex30.exe")) {
            reply.headers += "Last-modified: " + answer.date.value_or(kServerDate) + "\r\n";
        }
        for (const std::string& header : answer.headers) {
            reply.headers += header + "\r\n";
        }
        reply.body = body;
        reply.silent = answer.silent;
        if (answer.breach == scenarios::Breach::kStall) {
            reply.stallAfter = answer.endAfter;
        } else if (answer.breach != scenarios::Breach::kNone) {
            reply.breakAfter = answer.endAfter;
        }
        EXPECT_FALSE(answer.raw || answer.interims != 0 || answer.chunkSize != 0 ||
                     answer.afterwards != scenarios::Afterwards::kKeep || answer.early)
            << "such an answer cannot be had on the simulation";
        return reply;
    }

    // What the user sees and does. Boxes and dialogs are answered from inside the program.

    void ScriptUser() {
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

    static std::string WithNames(std::string text) {
        text = scenarios::Replaced(text, "{folder}", "C:\\Tolvex");
        return scenarios::Replaced(text, "{server}", "tolvex.example/files/");
    }

    template <class Condition>
    bool PumpUntil(Condition condition) {
        const std::int64_t end = world.uptime + kLongestStage;
        while (!condition() && !world.RunOver() && world.uptime < end) {
            world.PumpFor(10);
        }
        return condition();
    }

    struct Part {
        Control* control;
        Property<std::string>* text;
    };

    Part PartOf(const std::string& name) {
        frmSwiftPatch& w = Window();
        const std::map<std::string, Part> parts{
            {"lblStatus", {&w.lblStatus, &w.lblStatus.Caption}},
            {"lblAnimationMsg", {&w.lblAnimationMsg, &w.lblAnimationMsg.Caption}},
            {"lblTolvexVersion", {&w.lblTolvexVersion, &w.lblTolvexVersion.Caption}},
            {"cmdInstall", {&w.cmdInstall, &w.cmdInstall.Caption}},
            {"cmdRetry", {&w.cmdRetry, &w.cmdRetry.Caption}},
            {"cmdClose", {&w.cmdClose, &w.cmdClose.Caption}},
            {"Animation1", {&w.Animation1, nullptr}},
            {"ProgressBar1", {&w.ProgressBar1, nullptr}},
            {"fraMessages", {&w.fraMessages, nullptr}}};
        return parts.at(name);
    }

    void CheckBox(const std::string& nameAndAnswer) {
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

    void Pass(const std::string&) {}

    void SeeText(const std::string& controlAndText) {
        std::string text = controlAndText;
        const Part part = PartOf(scenarios::TakeWord(text));
        text = WithNames(scenarios::Unescaped(text));
        EXPECT_TRUE(PumpUntil([&] { return part.text->Get() == text; }))
            << "it shows " << Quoted(part.text->Get());
    }

    void SeeCaption(const std::string& text) {
        EXPECT_TRUE(PumpUntil([&] { return Window().Caption.Get() == text; }));
    }

    void SeeControl(const std::string& name) {
        const Part part = PartOf(name);
        EXPECT_TRUE(PumpUntil([&] { return part.control->Visible && part.control->Enabled; }));
    }

    void SeeHidden(const std::string& name) {
        const Part part = PartOf(name);
        EXPECT_TRUE(PumpUntil([&] { return !part.control->Visible; }));
    }

    void SeeReport(const std::string& text) {
        EXPECT_NE(Window().txtDebug.Text.Get().find(WithNames(scenarios::Unescaped(text))),
                  std::string::npos)
            << Window().txtDebug.Text.Get();
    }

    void Press(const std::string& name) {
        auto& button = static_cast<CommandButton&>(*PartOf(name).control);
        EXPECT_TRUE(PumpUntil([&] { return button.Visible && button.Enabled; }));
        world.Click(Window(), button);
    }

    void Untick(const std::string&) { Window().chkRunTolvex.Value = CheckState::kUnchecked; }

    // The only way out of a wait that never ends.
    void SwitchOff(const std::string& seconds) {
        const std::int64_t milliseconds = std::stoll(seconds) * 1000;
        world.After(milliseconds, [this] { world.EndRun(); });
        world.PumpFor(milliseconds + 1000);
        EXPECT_TRUE(world.RunOver());
    }

    void AwaitEnd(const std::string&) {
        EXPECT_TRUE(PumpUntil([this] { return world.RunOver(); }));
    }

    // What must be true at the end.

    std::map<std::string, std::string> Files() {
        std::map<std::string, std::string> files;
        for (const std::string& path : world.disk.Names()) {
            files[path.substr(path.rfind('\\') + 1)] = world.disk.Find(path)->bytes;
        }
        return files;
    }

    void CheckRequests(const std::string& requests) {
        std::vector<std::string> seen;
        for (const std::string& request : world.network.Requests()) {
            seen.push_back(scenarios::Replaced(request, kServerFolder, ""));
        }
        EXPECT_EQ(seen, NamesIn(requests, "none"));
    }

    void CheckFiles(const std::string& differences) {
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
        EXPECT_EQ(lines, NamesIn(differences, "unchanged"));
    }

    void CheckContent(const std::string& nameAndContent) {
        auto [name, content] = NameAndContent(nameAndContent);
        const headless::File* file = world.disk.Find(world.PathOf(name));
        ASSERT_TRUE(file != nullptr) << "there is no " << name;
        if (scenarios::TakeBeginning(content, "a beginning of")) {
            EXPECT_TRUE(Content(content).starts_with(file->bytes));
        } else {
            EXPECT_TRUE(file->bytes == Content(content)) << file->bytes.size() << " bytes";
        }
    }

    // "120 to 130"
    void CheckTime(const std::string& limits) {
        std::string most = limits;
        const std::int64_t least = std::stoll(scenarios::TakeWord(most));
        scenarios::TakeBeginning(most, "to");
        EXPECT_GE(seconds_, least);
        EXPECT_LE(seconds_, std::stoll(most));
    }

    void CheckYields(const std::string& count) { EXPECT_GE(pumps_, std::stoll(count)); }

    const Table& table_;
    const Row& row_;
    std::string offered_ = "3.0.12.5";
    bool endless_ = false;
    std::int64_t pumps_ = 0;
    std::int64_t seconds_ = 0;
    std::map<std::string, std::string> before_;
};

class UnreadableTable : public testing::Test {
public:
    explicit UnreadableTable(std::string message) : message_(std::move(message)) {}
    void TestBody() override { ADD_FAILURE() << message_; }

private:
    std::string message_;
};

bool RegisterRows() {
    constexpr char kSuite[] = "Scenario";
    try {
        static const Table kTable(SWIFTPATCH_SCENARIOS);
        for (const Row& row : kTable.Rows()) {
            if (row.onSimulation) {
                testing::RegisterTest(kSuite, row.name.c_str(), nullptr, nullptr,
                                      row.line.file.c_str(), row.line.number,
                                      [&row]() -> testing::Test* {
                                          return new ScenarioOnTheSimulation(kTable, row);
                                      });
            }
        }
    } catch (const scenarios::TableError& error) {
        testing::RegisterTest("UnreadableTable", "OfScenarios", nullptr, nullptr, __FILE__,
                              __LINE__, [message = std::string(error.what())]() -> testing::Test* {
                                  return new UnreadableTable(message);
                              });
    }
    return true;
}

const bool kRegistered = RegisterRows();

}  // namespace
}  // namespace swiftpatch
