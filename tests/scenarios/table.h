#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "scenarios/answer.h"
#include "scenarios/words.h"

namespace swiftpatch::scenarios {

/// A line of a row: its first word, and what follows it.
struct Line {
    std::string file;
    int number = 0;
    std::string word;
    std::string rest;

    /// "lengths.txt:12"
    std::string Place() const { return file + ":" + std::to_string(number); }
};

/// What the server is to answer to one request, or to every one of its kind.
struct Script {
    Line line;
    std::size_t turn = 0;  ///< 1: only the first such request, and so on; 0: every one.
    std::string method;
    std::string name;  ///< Of the file in the server folder.
    Answer answer;
};

/// One scenario.
struct Row {
    Line line;
    std::string name;
    std::string purpose;
    bool onProgram = true;      ///< Runs the real program.
    bool onSimulation = false;  ///< Runs the program's code on the machine in memory.
    std::vector<Line> given;
    std::vector<Script> scripts;
    std::vector<Line> steps;   ///< What the user sees and does, in this order.
    std::vector<Line> checks;  ///< What must be true at the end.
};

/// The title and the text of a message box or of the failure dialog; {1} stands for what a row
/// says in parentheses.
struct Wording {
    std::string title;
    std::string text;
};

/// All rows of a folder of tables, and the texts and outcomes that they have in common.
class Table {
public:
    /// Reads every .txt file of the folder. Throws TableError, which names the place.
    explicit Table(const std::filesystem::path& folder);

    const std::vector<Row>& Rows() const { return rows_; }
    /// The wording that a row calls "name" or "name(argument)".
    Wording Box(const std::string& call) const { return Worded(boxes_, call); }
    Wording Failure(const std::string& call) const { return Worded(failures_, call); }

private:
    using Wordings = std::map<std::string, Wording>;

    void ReadFile(const std::filesystem::path& path);
    void ReadHead(const Line& line);
    void ReadLine(Line line);
    void Finish(Row& row) const;
    static Wording Worded(const Wordings& wordings, const std::string& call);

    std::vector<Row> rows_;
    std::map<std::string, std::vector<Line>> outcomes_;
    Wordings boxes_;
    Wordings failures_;
    Wording* wording_ = nullptr;  ///< What the next lines belong to; otherwise it is a row or
    std::vector<Line>* outcome_ = nullptr;  ///< an outcome.
};

}  // namespace swiftpatch::scenarios
