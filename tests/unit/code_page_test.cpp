#include "runtime/code_page.h"

#include <gtest/gtest.h>

#include "runtime/headless/code_page.h"

namespace swiftpatch {
namespace {

TEST(CodePage, OfSingleBytesHasNothingToMask) { EXPECT_EQ(MaskTrailBytes("\x83\\|"), "\x83\\|"); }

TEST(CodePage, OfTwoBytesMasksTheSecondOnesOnly) {
    const headless::CodePage japanese(932);
    EXPECT_EQ(MaskTrailBytes("a\x83\\\\b\x83|"), "a\x83\x83\\b\x83\x83");
    EXPECT_EQ(MaskTrailBytes("\x83\x83\\"), "\x83\x83\\");
    EXPECT_EQ(MaskTrailBytes(""), "");
}

TEST(CodePage, LeadByteWithoutASecondOneStandsForItself) {
    const headless::CodePage japanese(932);
    EXPECT_EQ(MaskTrailBytes("a\x83"), "a\x83");
    EXPECT_EQ(MaskTrailBytes("\x83/\x83.\x83:"), "\x83/\x83.\x83:");
}

TEST(CodePage, HasCapitalsOfItsOwn) {
    EXPECT_EQ(UpperCase("a-z \xE4\xF7\xFF"), "A-Z \xC4\xF7\x9F");
    const headless::CodePage japanese(932);
    EXPECT_EQ(UpperCase("a\x83"
                        "a\x82\x81\xE4"),
              "A\x83"
              "a\x82\x60\xE4");
}

}  // namespace
}  // namespace swiftpatch
