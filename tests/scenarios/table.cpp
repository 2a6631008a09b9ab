#include "scenarios/table.h"

#include <algorithm>
#include <fstream>
#include <set>

namespace swiftpatch::scenarios {
namespace fs = std::filesystem;
namespace {

using Words = std::set<std::string>;

// Functions, since a table may be read before this file's own constants are there.
const Words& Given() {
    static const Words kWords{"runs",    "offers",     "installed", "staged",  "animation",
                              "file",    "settings",   "folder",    "https",   "keys",
                              "held",    "locked",     "clock",     "running", "zone",
                              "records", "connection", "patience"};
    return kWords;
}

const Words& Steps() {
    static const Words kWords{"box",    "failure", "shows",  "caption", "sees",
                              "hidden", "press",   "untick", "corner",  "download",
                              "asked",  "ends",    "change", "report",  "off"};
    return kWords;
}

const Words& Checks() {
    static const Words kWords{"requests", "files", "content", "started", "yields", "lasts"};
    return kWords;
}

[[noreturn]] void Refuse(const Line& line, const std::string& message) {
    throw TableError(message + " (" + line.Place() + ")");
}

// "2nd HEAD tolvex30.exe | length 12 | not dated"
Script ParseScript(const Line& line) {
    Script script;
    script.line = line;
    const std::size_t bar = line.rest.find('|');
    if (bar == std::string::npos) {
        Refuse(line, "an answer wants a bar between the request and what is answered");
    }
    std::string request = line.rest.substr(0, bar);
    script.method = TakeWord(request);
    if (script.method.find_first_of("123456789") == 0) {
        script.turn = NumberIn(script.method.substr(0, script.method.size() - 2));
        script.method = TakeWord(request);
    }
    script.name = Trimmed(request);
    try {
        script.answer = ParseAnswer(line.rest.substr(bar + 1));
    } catch (const TableError& error) {
        Refuse(line, error.what());
    }
    return script;
}

// Two checks about the same thing: the row's own counts, not the one of its outcome.
bool SameSubject(const Line& a, const Line& b) {
    const auto subject = [](const Line& line) {
        std::string rest = line.rest;
        return line.word + (line.word == "content" ? " " + TakeWord(rest) : "");
    };
    return subject(a) == subject(b);
}

void ReadRunners(Row& row, const Line& line) {
    row.onProgram = line.rest == "program" || line.rest == "both";
    row.onSimulation = line.rest == "simulation" || line.rest == "both";
    if (!row.onProgram && !row.onSimulation) {
        Refuse(line, "runs on the program, the simulation or both");
    }
}

}  // namespace

Table::Table(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == ".txt") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    for (const fs::path& file : files) {
        ReadFile(file);
    }
    std::set<std::string> names;
    for (Row& row : rows_) {
        Finish(row);
        if (!names.insert(row.name).second) {
            Refuse(row.line, "a second row " + row.name);
        }
    }
}

void Table::ReadFile(const fs::path& path) {
    std::ifstream stream(path);
    Line line;
    line.file = path.filename().string();
    wording_ = nullptr;
    outcome_ = nullptr;
    bool inside = false;
    for (std::string text; std::getline(stream, text);) {
        ++line.number;
        line.rest = Trimmed(text);
        if (line.rest.empty() || line.rest.front() == '#') {
            continue;
        }
        if (line.rest.front() == '[') {
            ReadHead(line);
            inside = true;
        } else if (inside) {
            ReadLine(line);
        } else {
            Refuse(line, "nothing has begun yet");
        }
    }
}

void Table::ReadHead(const Line& line) {
    const std::size_t end = line.rest.find(']');
    if (end == std::string::npos) {
        Refuse(line, "] is missing");
    }
    std::string name = line.rest.substr(1, end - 1);
    wording_ = nullptr;
    outcome_ = nullptr;
    if (TakeBeginning(name, "outcome")) {
        outcome_ = &outcomes_[name];
    } else if (TakeBeginning(name, "box")) {
        wording_ = &boxes_[name];
    } else if (TakeBeginning(name, "failure")) {
        wording_ = &failures_[name];
    } else {
        Row row;
        row.line = line;
        row.name = name;
        row.purpose = Trimmed(line.rest.substr(end + 1));
        rows_.push_back(row);
    }
}

void Table::ReadLine(Line line) {
    line.word = TakeWord(line.rest);
    if (wording_ != nullptr) {
        if (line.word == "title") {
            wording_->title = Unescaped(line.rest);
        } else if (line.word == "text") {
            wording_->text += Unescaped(line.rest) + "\r\n";
        } else {
            Refuse(line, "a box has a title and a text");
        }
    } else if (outcome_ != nullptr) {
        outcome_->push_back(line);
    } else if (line.word == "runs") {
        ReadRunners(rows_.back(), line);
    } else if (line.word == "answer") {
        rows_.back().scripts.push_back(ParseScript(line));
    } else if (Given().count(line.word) != 0) {
        rows_.back().given.push_back(line);
    } else {
        rows_.back().steps.push_back(line);
    }
}

// Puts the lines of the outcomes into their places and parts what is seen from what is checked.
void Table::Finish(Row& row) const {
    std::vector<Line> inherited;
    std::vector<Line> steps;
    for (const Line& line : row.steps) {
        if (Checks().count(line.word) != 0) {
            row.checks.push_back(line);
            continue;
        }
        if (Steps().count(line.word) != 0) {
            steps.push_back(line);
            continue;
        }
        const auto found = outcomes_.find(line.rest);
        if (line.word != "then" || found == outcomes_.end()) {
            Refuse(line, "unknown: " + line.word + " " + line.rest);
        }
        for (const Line& step : found->second) {
            (Checks().count(step.word) != 0 ? inherited : steps).push_back(step);
        }
    }
    row.steps = steps;
    const std::vector<Line> own = row.checks;
    for (const Line& check : inherited) {
        if (std::none_of(own.begin(), own.end(),
                         [&](const Line& line) { return SameSubject(line, check); })) {
            row.checks.push_back(check);
        }
    }
}

Wording Table::Worded(const Wordings& wordings, const std::string& call) {
    const std::size_t open = call.find('(');
    const auto found = wordings.find(Trimmed(call.substr(0, open)));
    if (found == wordings.end()) {
        throw TableError("no such text: " + call);
    }
    Wording wording = found->second;
    wording.text.resize(wording.text.size() - 2);  // The last line's end.
    if (open != std::string::npos) {
        const std::string argument = call.substr(open + 1, call.rfind(')') - open - 1);
        wording.title = Replaced(wording.title, "{1}", argument);
        wording.text = Replaced(wording.text, "{1}", argument);
    }
    return wording;
}

}  // namespace swiftpatch::scenarios
