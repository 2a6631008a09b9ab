#pragma once

#include <string>
#include <utility>
#include <vector>

namespace publish_check {

enum class Severity {
    kGood,
    kNote,
    kWarning,
    kFault,  ///< An updater would not be served.
};

struct Finding {
    Severity severity = Severity::kGood;
    std::string subject;  ///< The file that it is about, or "updater".
    std::string code;     ///< For machines; stays the same when the text changes.
    std::string text;     ///< A sentence.
};

/// Gathers the findings about one subject.
class Findings {
public:
    Findings(std::vector<Finding>& list, std::string subject)
        : list_(list), subject_(std::move(subject)) {}

    void Good(const std::string& code, const std::string& text) {
        Add(Severity::kGood, code, text);
    }
    void Note(const std::string& code, const std::string& text) {
        Add(Severity::kNote, code, text);
    }
    void Warn(const std::string& code, const std::string& text) {
        Add(Severity::kWarning, code, text);
    }
    void Fault(const std::string& code, const std::string& text) {
        Add(Severity::kFault, code, text);
    }

private:
    void Add(Severity severity, const std::string& code, const std::string& text) {
        list_.push_back({severity, subject_, code, text});
    }

    std::vector<Finding>& list_;
    std::string subject_;
};

}  // namespace publish_check
