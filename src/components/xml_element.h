#pragma once

#include <string>
#include <string_view>

namespace swiftpatch {

/// One XML element with at most one attribute; an empty attribute name makes none. Nothing is
/// escaped, so that content may hold elements: "&" and "<" in a text stay as they are.
std::string XmlElement(std::string_view content, std::string_view tag,
                       std::string_view attributeName = {}, std::string_view attributeValue = {});

}  // namespace swiftpatch
