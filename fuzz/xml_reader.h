#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace swiftpatch::fuzz {

/// An element of an XML text, read strictly: no mixed content, no entities, no comments.
struct Element {
    std::string name;
    std::string text;  ///< Of an element without children.
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<Element> children;
};

/// The one element of a well-formed text, which may start with a declaration; empty for a text that
/// is not well-formed.
std::optional<Element> ReadXml(std::string_view text);

}  // namespace swiftpatch::fuzz
