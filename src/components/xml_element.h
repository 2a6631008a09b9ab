#pragma once

#include <string>
#include <string_view>

namespace swiftpatch {

/// One XML element with at most one attribute; an empty attribute name makes none. Nothing is
/// escaped: content may hold elements, and what is no XML in a text stays as it stands.
std::string XmlElement(std::string_view content, std::string_view tag,
                       std::string_view attributeName = {}, std::string_view attributeValue = {});

}  // namespace swiftpatch
