#include "components/xml_element.h"

namespace swiftpatch {

std::string XmlElement(std::string_view content, std::string_view tag,
                       std::string_view attributeName, std::string_view attributeValue) {
    std::string element = "<";
    element += tag;
    if (!attributeName.empty()) {
        element.append(" ").append(attributeName).append(" = '").append(attributeValue).append("'");
    }
    element.append(">").append(content).append("</").append(tag).append(">");
    return element;
}

}  // namespace swiftpatch
