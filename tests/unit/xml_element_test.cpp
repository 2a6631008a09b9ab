#include "components/xml_element.h"

#include <gtest/gtest.h>

namespace swiftpatch {
namespace {

TEST(XmlElement, AttributeWithAnEmptyNameIsLeftOut) {
    EXPECT_EQ(XmlElement("content", "TAG"), "<TAG>content</TAG>");
    EXPECT_EQ(XmlElement("content", "TAG", "", "value"), "<TAG>content</TAG>");
}

TEST(XmlElement, AttributeStandsInSingleQuotes) {
    EXPECT_EQ(XmlElement("c", "TAG", "name", "value"), "<TAG name = 'value'>c</TAG>");
    EXPECT_EQ(XmlElement("c", "TAG", "name", ""), "<TAG name = ''>c</TAG>");
}

TEST(XmlElement, NothingIsEscaped) {
    EXPECT_EQ(XmlElement("a<b&c", "T", "n", "it's <&>"), "<T n = 'it's <&>'>a<b&c</T>");
}

}  // namespace
}  // namespace swiftpatch
