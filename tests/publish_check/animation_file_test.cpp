#include "publish_check/animation_file.h"

#include <gtest/gtest.h>

#include "fixtures/animation.h"

namespace publish_check {
namespace {

using swiftpatch::fixtures::MakeAnimation;

/// The animation with the number or name after its chunk `chunk` replaced.
std::string With(const std::string& chunk, std::size_t at, const std::string& bytes) {
    std::string animation = MakeAnimation(2);
    return animation.replace(animation.find(chunk) + 8 + at, bytes.size(), bytes);
}

TEST(AnimationFile, TheSampleIsPlayable) { EXPECT_EQ(ReasonNotPlayable(MakeAnimation(2)), ""); }

TEST(AnimationFile, RunLengthEncodingIsPlayable) {
    EXPECT_EQ(ReasonNotPlayable(With("strf", 16, {"\x01\0\0\0", 4})), "");
}

TEST(AnimationFile, OtherCompressionIsNot) {
    EXPECT_NE(ReasonNotPlayable(With("strf", 16, "cvid")).find("compressed"), std::string::npos);
}

TEST(AnimationFile, SoundIsNot) {
    EXPECT_EQ(ReasonNotPlayable(With("strh", 0, "auds")), "it has sound");
}

TEST(AnimationFile, WithoutPicturesIsNot) {
    EXPECT_NE(ReasonNotPlayable(With("strh", 0, "txts")).find("picture stream"), std::string::npos);
}

TEST(AnimationFile, OtherFilesAreNot) {
    EXPECT_EQ(ReasonNotPlayable(std::string(2000, 'x')), "it is no AVI file");
    EXPECT_EQ(ReasonNotPlayable(""), "it is cut off or damaged");
}

// The sanitizers look on.
TEST(AnimationFile, CutFilesAreNot) {
    const std::string whole = MakeAnimation(2);
    for (std::size_t size = 0; size < whole.size(); size += size < 3000 ? 1 : 97) {
        EXPECT_NE(ReasonNotPlayable(whole.substr(0, size)), "") << size;
    }
}

}  // namespace
}  // namespace publish_check
