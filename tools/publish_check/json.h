#pragma once

#include <string>

namespace publish_check {

/// A text as JSON has it (RFC 8259), in its quotes. Bytes above 127 are written as the characters
/// of the same number, so that the result can be read whatever a server sends.
std::string JsonText(const std::string& text);

inline std::string JsonTruth(bool value) { return value ? "true" : "false"; }

/// The text of each item, as `write` makes it, in brackets.
template <typename Items, typename Write>
std::string JsonList(const Items& items, Write write) {
    std::string json;
    for (const auto& item : items) {
        json += (json.empty() ? "" : ",") + write(item);
    }
    return "[" + json + "]";
}

}  // namespace publish_check
