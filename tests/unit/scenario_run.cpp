#include "unit/scenario_run.h"

#include <iostream>
#include <limits>

#include "shared/shared_state.h"

namespace swiftpatch {

using scenarios::Answer;
using scenarios::Line;
using scenarios::Script;

namespace {

constexpr char kServerDate[] = "Wed, 05 Feb 2020 08:12:00 GMT";
constexpr std::size_t kLicenceSize = 5000;

}  // namespace

std::string ScenarioContent(const std::string& description) {
    return scenarios::ContentOf(description, [](std::string build) {
        const std::string version = scenarios::TakeWord(build);
        const bool otherSize = scenarios::TakeBeginning(build, "as long as");
        return headless::Build(version == "none" ? "" : version,
                               scenarios::SizeOfBuild(otherSize ? build : version).value());
    });
}

const std::map<std::string, ScenarioRun::Action>& ScenarioRun::Actions() {
    using Self = ScenarioRun;
    static const std::map<std::string, Action> kActions{
        {"offers", &Self::Offers},
        {"installed", &Self::Installed},
        {"staged", &Self::Staged},
        {"animation", &Self::Animation},
        {"settings", &Self::Settings},
        {"file", &Self::PlaceFile},
        {"keys", &Self::Keys},
        {"started", &Self::CheckStarted},
        {"clock", &Self::SetClock},
        {"zone", &Self::SetZone},
        {"connection", &Self::Connection},
        {"patience", &Self::Patience},
        {"shows", &Self::SeeText},
        {"caption", &Self::SeeCaption},
        {"sees", &Self::SeeControl},
        {"hidden", &Self::SeeHidden},
        {"report", &Self::SeeReport},
        {"press", &Self::Press},
        {"untick", &Self::Untick},
        {"lasts", &Self::CheckTime},
        {"ends", &Self::AwaitEnd},
        {"requests", &Self::CheckRequests},
        {"files", &Self::CheckFiles},
        {"content", &Self::CheckContent},
        {"yields", &Self::CheckYields},
        {"box", &Self::CheckBox},
        {"failure", &Self::Pass},
        {"off", &Self::SwitchOff},
    };
    return kActions;
}

void ScenarioRun::TestBody() {
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

void ScenarioRun::Do(const Line& line) {
    const testing::ScopedTrace place(line.file.c_str(), line.number, line.word + " " + line.rest);
    const auto found = Actions().find(line.word);
    ASSERT_TRUE(found != Actions().end()) << "cannot be done on the simulation";
    (this->*found->second)(line.rest);
}

void ScenarioRun::Installed(const std::string& version) {
    world.disk.Remove(world.PathOf("tolvex.exe"));
    if (version != "nothing") {
        world.AddFile("tolvex.exe", ScenarioContent(version));
    }
}

void ScenarioRun::Staged(const std::string& versionAndTime) {
    std::string time = versionAndTime;
    const std::string version = scenarios::TakeWord(time);
    world.AddFile("tolvex30.exe", ScenarioContent(version),
                  AddMinutes(scenarios::TimeIn(time), world.utcOffsetMinutes));
}

void ScenarioRun::Animation(const std::string& state) {
    world.disk.Remove(world.PathOf("filecopy.avi"));
    if (state != "missing") {
        world.AddFile("filecopy.avi", ScenarioContent(state));
    }
}

// Only what does not change the folder has a meaning here.
void ScenarioRun::Settings(const std::string& contents) {
    shared.InstallAtOnce = contents.find("InstallAtOnce=1") != std::string::npos;
    shared.OfferBackups = contents.find("OfferBackups=1") != std::string::npos;
    ASSERT_TRUE(shared.InstallAtOnce || shared.OfferBackups);
}

void ScenarioRun::Keys(const std::string& names) { shared.SigningKeys = scenarios::KeysOf(names); }

void ScenarioRun::PlaceFile(const std::string& nameAndContent) {
    const auto [name, content] = scenarios::NameAndContent(nameAndContent);
    const headless::File* old = world.disk.Find(world.PathOf(name));
    world.AddFile(name, ScenarioContent(content), old == nullptr ? DateTime{} : old->changed);
}

void ScenarioRun::SetClock(const std::string& time) { world.SetLocalTime(scenarios::TimeIn(time)); }

void ScenarioRun::Connection(const std::string& kind) {
    constexpr std::uint32_t kRemoteAccess = 0x20;
    if (kind == "none") {
        world.machine.connected = false;
    } else {
        world.machine.connectionFlags |= kRemoteAccess;
    }
}

void ScenarioRun::PrepareServer() {
    for (const char* name :
         {"tolvex30.exe", "LICENSE.TXT", "filecopy.avi", "tolvex30.exe.minisig"}) {
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
            world.network.AnswerNext(request,
                                     found == replies.end() ? ReplyTo(name, {}) : found->second);
        }
    }
}

std::string ScenarioRun::Url(const std::string& method, const std::string& name) {
    return method + " " + kFolder + name;
}

std::string ScenarioRun::UsualBody(const std::string& name) const {
    if (name == "LICENSE.TXT") {
        return std::string(kLicenceSize, 'L');
    }
    if (name == "tolvex30.exe.minisig") {
        return scenarios::SignatureFile({{"maker", "", "tolvex30.exe"}}, offered_, ScenarioContent);
    }
    return name == "filecopy.avi" ? std::string(20000, 'a') : ScenarioContent(offered_);
}

headless::Reply ScenarioRun::ReplyTo(const std::string& name, const Answer& answer) const {
    std::string body = answer.build ? ScenarioContent(*answer.build) : UsualBody(name);
    if (!answer.signatures.empty()) {
        body = scenarios::SignatureFile(answer.signatures, offered_, ScenarioContent);
    }
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

}  // namespace swiftpatch
