#include "runtime/headless/trace.h"

#include <algorithm>

namespace swiftpatch::headless {

void Trace::Add(const std::string& line) {
    // A loop that waits yields thousands of times; that it waited is what can be observed.
    const bool waiting =
        line == "DoEventsResting" || line == "DoEventsWaiting" || line == "DoEventsPaced";
    if (waiting && !lines_.empty() && lines_.back() == line) {
        return;
    }
    lines_.push_back(line);
}

std::size_t Trace::Count(const std::string& line) const {
    return static_cast<std::size_t>(std::count(lines_.begin(), lines_.end(), line));
}

std::vector<std::string> Trace::StartingWith(const std::string& prefix) const {
    std::vector<std::string> found;
    std::copy_if(lines_.begin(), lines_.end(), std::back_inserter(found),
                 [&prefix](const std::string& line) { return line.starts_with(prefix); });
    return found;
}

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) {
        switch (character) {
            case '\r':
                quoted += "\\r";
                break;
            case '\n':
                quoted += "\\n";
                break;
            case '\0':
                quoted += "\\0";
                break;
            default:
                quoted += character;
        }
    }
    return quoted + "\"";
}

}  // namespace swiftpatch::headless
