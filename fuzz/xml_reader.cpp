#include "xml_reader.h"

namespace swiftpatch::fuzz {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kNameCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-.";
constexpr int kDeepest = 100;

class Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) {}

    bool AtEnd() const { return rest_.empty(); }
    bool Sees(std::string_view text) const { return rest_.starts_with(text); }

    bool Take(std::string_view text) {
        if (!Sees(text)) {
            return false;
        }
        rest_.remove_prefix(text.size());
        return true;
    }

    std::string TakeWhile(std::string_view characters) {
        return Cut(rest_.find_first_not_of(characters));
    }
    std::string TakeUntil(std::string_view characters) {
        return Cut(rest_.find_first_of(characters));
    }

private:
    std::string Cut(std::size_t end) {
        const std::string taken(rest_.substr(0, end));
        rest_.remove_prefix(taken.size());
        return taken;
    }

    std::string_view rest_;
};

bool ReadAttribute(Reader& reader, Element& element) {
    const std::string name = reader.TakeWhile(kNameCharacters);
    reader.TakeWhile(kBlanks);
    if (name.empty() || !reader.Take("=")) {
        return false;
    }
    reader.TakeWhile(kBlanks);
    if (!reader.Take("'")) {
        return false;
    }
    element.attributes.emplace_back(name, reader.TakeUntil("'<&"));
    return reader.Take("'");
}

bool ReadStartTag(Reader& reader, Element& element) {
    if (!reader.Take("<")) {
        return false;
    }
    element.name = reader.TakeWhile(kNameCharacters);
    while (!reader.TakeWhile(kBlanks).empty() && !reader.Sees(">")) {
        if (!ReadAttribute(reader, element)) {
            return false;
        }
    }
    return !element.name.empty() && reader.Take(">");
}

bool ReadElement(Reader& reader, Element& element, int depth) {
    if (depth > kDeepest || !ReadStartTag(reader, element)) {
        return false;
    }
    element.text = reader.TakeUntil("<&");
    while (reader.Sees("<") && !reader.Sees("</")) {
        if (!ReadElement(reader, element.children.emplace_back(), depth + 1)) {
            return false;
        }
        reader.TakeWhile(kBlanks);
    }
    return reader.Take("</" + element.name + ">");
}

}  // namespace

std::optional<Element> ReadXml(std::string_view text) {
    Reader reader(text);
    if (reader.Take("<?xml version=\"1.0\"?>")) {
        reader.TakeWhile(kBlanks);
    }
    Element root;
    if (!ReadElement(reader, root, 0) || !reader.AtEnd()) {
        return std::nullopt;
    }
    return root;
}

}  // namespace swiftpatch::fuzz
