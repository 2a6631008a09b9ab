#include <algorithm>
#include <string>

#include "components/CabFile.h"
#include "components/cabinet_names.h"
#include "components/xml_element.h"
#include "property.h"
#include "runtime/headless/cabinet.h"
#include "runtime/headless/world.h"
#include "runtime/strings.h"
#include "xml_reader.h"

namespace swiftpatch::fuzz {
namespace {

constexpr const char* kCabinet = "C:\\a.cab";

/// Nothing is escaped, so only such texts can make well-formed XML.
bool IsPlain(std::string_view text) { return text.find_first_of("<&") == std::string_view::npos; }

void CheckElement(std::string_view content, std::string_view attribute) {
    const std::string written = XmlElement(content, "TAG", "name", attribute);
    Always(written ==
               "<TAG name = '" + std::string(attribute) + "'>" + std::string(content) + "</TAG>",
           "texts stand in an element as they are");
    if (!IsPlain(content) || !IsPlain(attribute) || attribute.find('\'') != attribute.npos) {
        return;
    }
    const auto element = ReadXml(written);
    Always(element.has_value(), "an element of plain texts is well-formed");
    Always(element->text == content && element->attributes.size() == 1 &&
               element->attributes[0].second == attribute,
           "an element's texts are read back");
    const auto outer = ReadXml(XmlElement(written + written, "OUTER"));
    Always(outer.has_value() && outer->children.size() == 2,
           "elements in elements are well-formed");
}

void CheckFileElement(const Element& element, const std::string& name) {
    const auto& parts = element.children;
    Always(element.name == "FILE" && parts.size() == 5, "a file has five descriptions");
    Always(parts[0].text == name && parts[1].text == BareName(name) &&
               parts[3].text == std::to_string(name.size()) && parts[4].text == FolderPart(name),
           "a file's descriptions are read back");
}

/// Describes a cabinet with files of those names, each as long as its name.
void CheckDescription(const std::vector<std::string>& names) {
    headless::World world;
    headless::Cabinet cabinet(kCabinet);
    for (const std::string& name : names) {
        cabinet.Add(headless::CabinetFile{name, name});
    }
    CabFile file;
    file.CabName = kCabinet;
    const std::string written = file.GetXML();
    if (!std::all_of(names.begin(), names.end(), IsPlain)) {
        return;
    }
    const auto root = ReadXml(written);
    Always(root.has_value(), "a cabinet with plain names has a well-formed description");
    Always(root->name == "CABFILE" && root->children.size() == 2 &&
               root->children[0].text == kCabinet && root->children[1].name == "FILES" &&
               root->children[1].children.size() == names.size(),
           "a description has a name and all files");
    for (std::size_t i = 0; i < names.size(); ++i) {
        CheckFileElement(root->children[1].children[i], names[i]);
    }
}

}  // namespace
}  // namespace swiftpatch::fuzz

/// The names of the files in a cabinet, one on a line; the first is an attribute's value, too, and
/// the rest an element's content.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace swiftpatch;
    const std::string_view input = fuzz::TextOf(data, size);
    // A name in a cabinet ends at the first NUL.
    if (input.find('\0') == std::string_view::npos) {
        fuzz::CheckDescription(Split(input, '\n'));
    }
    const auto fields = fuzz::Fields(input, 2);
    fuzz::CheckElement(fields[1], fields[0]);
    return 0;
}
