#include "publish_check/scenario_state.h"

#include <algorithm>
#include <map>
#include <set>

#include "publish_check/sample_server.h"
#include "scenarios/content.h"
#include "scenarios/words.h"

namespace publish_check {
namespace {

using swiftpatch::scenarios::Answer;
using swiftpatch::scenarios::Breach;
using swiftpatch::scenarios::Line;
using swiftpatch::scenarios::Row;
using swiftpatch::scenarios::Script;

namespace words = swiftpatch::scenarios;

/// The row is about something else.
struct NotOurs {};

constexpr std::size_t kLicenceSize = 5000;

/// A row about a build of another kind is not ours.
std::size_t SizeOf(const std::string& version) {
    const std::optional<std::size_t> size = words::SizeOfBuild(version);
    if (!size) {
        throw NotOurs();
    }
    return *size;
}

std::string BuildOf(const std::string& version) {
    return SampleBuild(ParseVersion(version), SizeOf(version));
}

FieldMachine MachineWith(const std::optional<std::string>& keys) {
    return FieldMachine(swiftpatch::MakeDateTime({2020, 3, 10, 12, 0, 0}), keys);
}

// "3.0.12.5", "3.0.11.0 as long as 3.0.12.5", "letters 10"
void PutContent(FieldMachine& machine, const std::string& name, std::string content,
                swiftpatch::DateTime changed = {}) {
    if (words::TakeBeginning(content, "letters")) {
        machine.PutFile(name, std::string(words::NumberIn(content), 'x'));
        return;
    }
    const std::string version = words::TakeWord(content);
    const bool otherSize = words::TakeBeginning(content, "as long as");
    machine.PutFile(name, SampleBuild(ParseVersion(version), SizeOf(otherSize ? content : version)),
                    changed);
}

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

/// A number that may have any number of digits; a large one stands for all that are larger.
std::size_t CappedNumber(const std::string& digits) {
    constexpr std::size_t kMostDigits = 9;
    return digits.empty() || digits.size() > kMostDigits ? 1000000000 : std::stoul(digits);
}

void RefuseUnless(bool ours) {
    if (!ours) {
        throw NotOurs();
    }
}

/// What is read into a row.
class Reader {
public:
    explicit Reader(const Row& row)
        : row_(row), state_{{}, MachineWith(KeysIn(row)), KeysIn(row), {}} {}

    ScenarioState Read() {
        RefuseUnless(row_.onProgram);
        CheckSteps();
        for (const Line& line : row_.given) {
            ReadGiven(line);
        }
        if (installed_ != "nothing") {
            PutContent(state_.machine, "tolvex.exe", installed_);
        }
        if (animation_) {
            state_.machine.PutFile("filecopy.avi", "RIFF");
        }
        if (plain_) {
            state_.plain = Installed{ParseVersion(installed_)};
        }
        ReadServer();
        return state_;
    }

private:
    static std::optional<std::string> KeysIn(const Row& row) {
        for (const Line& line : row.given) {
            if (line.word == "keys") {
                return words::KeysOf(line.rest);
            }
        }
        return {};
    }

    /// A user who does more than look and leave is not ours.
    void CheckSteps() const {
        static const std::set<std::string> kLooks{"box",    "failure", "shows",  "caption", "sees",
                                                  "hidden", "report",  "untick", "ends"};
        for (const Line& line : row_.steps) {
            RefuseUnless(kLooks.contains(line.word) ||
                         (line.word == "press" && line.rest == "cmdClose"));
            RefuseUnless(line.word != "box" || line.rest.ends_with("-> OK"));
        }
    }

    void ReadGiven(const Line& line) {
        std::string rest = line.rest;
        if (line.word == "installed") {
            installed_ = rest;
        } else if (line.word == "offers") {
            offered_ = rest;
        } else if (line.word == "staged") {
            plain_ = false;
            const std::string version = words::TakeWord(rest);
            PutContent(state_.machine, "tolvex30.exe", version, words::TimeIn(rest));
        } else if (line.word == "animation") {
            RefuseUnless(rest == "missing");
            plain_ = animation_ = false;
        } else if (line.word == "file") {
            plain_ = false;
            RefuseUnless(rest.starts_with("tolvex.exe ="));
            installed_ = words::Trimmed(rest.substr(rest.find('=') + 1));
        } else if (line.word == "keys") {
            // Which the machine was made with.
        } else if (line.word == "https") {
            // What is wrong with a certificate is not in the answers, of which there are none.
            RefuseUnless(rest == "good");
        } else {
            throw NotOurs();
        }
    }

    void ReadServer() {
        state_.server = GoodServer();
        state_.server.licence = Published(std::string(kLicenceSize, 'L'));
        state_.server.build = offered_ == "nothing" ? PublishedFile{NotFound(), NotFound(), {}}
                                                    : Published(BuildOf(offered_), kPublishedDate);
        if (state_.keys) {
            state_.server.signature =
                Published(words::SignatureFile({{"maker", "", "tolvex30.exe"}}, offered_, BuildOf));
        }
        for (const Script& script : row_.scripts) {
            RefuseUnless(script.turn == 0);
            PublishedFile& file = FileOf(script.name);
            publish_check::Answer& answer = script.method == "HEAD" ? file.head : file.get;
            answer = AnswerOf(script, BodyOf(script.answer, file.get.body));
        }
    }

    PublishedFile& FileOf(const std::string& name) {
        const std::map<std::string, PublishedFile*> files{
            {"tolvex30.exe", &state_.server.build},
            {"LICENSE.TXT", &state_.server.licence},
            {"filecopy.avi", &state_.server.animation},
            {"tolvex30.exe.minisig", &state_.server.signature}};
        RefuseUnless(files.contains(name));
        return *files.at(name);
    }

    static publish_check::Answer NotFound() {
        publish_check::Answer answer = Ok("Content-Length: 48\r\n", std::string(48, ' '));
        answer.status = 404;
        return answer;
    }

    std::string BodyOf(const Answer& answer, const std::string& usual) const {
        std::string body = answer.build ? BuildOf(*answer.build) : usual;
        if (!answer.signatures.empty()) {
            body = words::SignatureFile(answer.signatures, offered_, BuildOf);
        }
        if (answer.letters) {
            body = std::string(*answer.letters, 'x');
        }
        body.resize(std::min(body.size(), answer.first.value_or(body.size())));
        return body;
    }

    static publish_check::Answer AnswerOf(const Script& script, const std::string& body) {
        const Answer& answer = script.answer;
        RefuseUnless(!answer.raw && !answer.early && answer.interims == 0);
        std::string headers;
        if (answer.chunkSize != 0) {
            headers = "Transfer-Encoding: chunked\r\n";
        } else if (!answer.withoutLength) {
            headers =
                "Content-length: " + answer.length.value_or(std::to_string(body.size())) + "\r\n";
        }
        if (!answer.withoutDate && (answer.date || script.name == "tolvex30.exe")) {
            headers += "Last-modified: " + answer.date.value_or(kPublishedDate) + "\r\n";
        }
        for (const std::string& header : answer.headers) {
            RefuseUnless(!header.starts_with("Location"));
            headers += header + "\r\n";
        }
        publish_check::Answer result = Ok(headers, script.method == "GET" ? body : "");
        if (answer.length && std::all_of(answer.length->begin(), answer.length->end(), IsDigit)) {
            // No client takes more than was announced.
            result.body.resize(std::min(result.body.size(), CappedNumber(*answer.length)));
        }
        if (answer.statusLine) {
            result.status = std::stoi(answer.statusLine->substr(answer.statusLine->find(' ') + 1));
        }
        if (answer.silent) {
            result = {};
            result.problem = "silent";
        } else if (answer.breach != Breach::kNone) {
            result.body.resize(std::min<std::size_t>(result.body.size(), answer.endAfter));
            result.problem = "broken off";
            result.closed = answer.breach == Breach::kClose;
        }
        return result;
    }

    const Row& row_;
    ScenarioState state_;
    std::string installed_ = "3.0.11.0";
    std::string offered_ = "3.0.12.5";
    bool animation_ = true;
    bool plain_ = true;
};

}  // namespace

std::optional<ScenarioState> StateOf(const Row& row) {
    try {
        return Reader(row).Read();
    } catch (const NotOurs&) {
        return std::nullopt;
    }
}

}  // namespace publish_check
