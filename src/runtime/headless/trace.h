#pragma once

#include <string>
#include <vector>

namespace swiftpatch::headless {

/// One line for each thing that a user or the system could observe, in order.
class Trace {
public:
    void Add(const std::string& line);

    const std::vector<std::string>& Lines() const { return lines_; }
    /// Forgets what was observed so far.
    void Clear() { lines_.clear(); }
    bool Contains(const std::string& line) const { return Count(line) > 0; }
    std::size_t Count(const std::string& line) const;
    /// The lines that start with `prefix`.
    std::vector<std::string> StartingWith(const std::string& prefix) const;

private:
    std::vector<std::string> lines_;
};

/// A text as it stands in a trace line: in quotes, line ends and NULs spelled out.
std::string Quoted(std::string_view text);

}  // namespace swiftpatch::headless
