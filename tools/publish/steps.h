#pragma once

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace publish {

struct Step {
    std::string kind;  ///< One word, for machines too.
    std::string text;
};

/// What has been done, shown as it happens, or kept for the report of a machine.
class Steps {
public:
    /// Without `out` nothing is shown.
    explicit Steps(std::ostream* out) : out_(out) {}

    void Add(const std::string& kind, const std::string& text) {
        constexpr std::size_t kColumn = 9;
        list_.push_back({kind, text});
        if (out_ != nullptr) {
            const std::size_t gap = kind.size() < kColumn ? kColumn - kind.size() : 1;
            *out_ << "  " << kind << std::string(gap, ' ') << text << "\n" << std::flush;
        }
    }

    const std::vector<Step>& List() const { return list_; }

private:
    std::ostream* out_;
    std::vector<Step> list_;
};

}  // namespace publish
