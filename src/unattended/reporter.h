#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "runtime/console/attendant.h"
#include "unattended/exit_status.h"

namespace swiftpatch {

/// Where a report goes.
struct ReportTarget {
    std::function<void(std::string_view)> write;
    /// A text of the system's code page as UTF-16, for JSON.
    std::function<std::u16string(std::string_view)> toUtf16;
    bool terminal = false;  ///< A person may see it come: progress is shown.
};

/// Writes what a run does, a line a step: for people, or as JSON.
class Reporter {
public:
    enum class Form { kText, kJson };

    Reporter(ReportTarget target, Form form, bool quiet);

    /// A part of the window shows another text. Says nothing of an empty text, of one that it
    /// said last of this part, and of a percentage. True when a line was written.
    bool Step(const std::string& part, const std::string& text);
    void Progress(std::int32_t percent);
    void Asked(const Question& question, const std::string& answer, bool known);
    void Request(const std::string& verb, const std::string& url);
    /// What the attendant itself has to say.
    void Note(const std::string& text);
    /// The run goes on, but there has been nothing to say for a while.
    void Waiting(std::uint32_t seconds);
    /// The last line, in the quiet form too.
    void End(ExitStatus status);

private:
    /// Names and values of a JSON object; a value is written as it stands.
    using Members = std::initializer_list<std::pair<const char*, std::string>>;

    void WriteLine(const std::string& text);
    void WriteJson(const char* event, Members members);
    std::string JsonText(const std::string& text) const;

    ReportTarget target_;
    Form form_;
    bool quiet_;
    bool lineOpen_ = false;  ///< The progress stands in a line that has no end yet.
    std::map<std::string, std::string> shown_;
};

}  // namespace swiftpatch
