#include "components/cabinet_names.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "runtime/headless/code_page.h"

namespace swiftpatch {
namespace {

std::string Under(std::string_view name) { return PathUnder("C:\\Out", name).value_or("refused"); }

void ExpectRefused(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        EXPECT_EQ(Under(name), "refused") << testing::PrintToString(name);
    }
}

TEST(CabinetNames, PlainNamesComeUnderTheFolder) {
    EXPECT_EQ(Under("readme.txt"), "C:\\Out\\readme.txt");
    EXPECT_EQ(Under("a\\b\\c"), "C:\\Out\\a\\b\\c");
    EXPECT_EQ(Under("two words & more.txt"), "C:\\Out\\two words & more.txt");
}

TEST(CabinetNames, BothSlashesSeparateFolders) { EXPECT_EQ(Under("a/b\\c"), "C:\\Out\\a\\b\\c"); }

TEST(CabinetNames, BackslashesAtTheEndOfTheFolderDoNotDouble) {
    EXPECT_EQ(PathUnder("C:\\", "x"), "C:\\x");
    EXPECT_EQ(PathUnder("C:\\Out\\\\", "x"), "C:\\Out\\x");
}

TEST(CabinetNames, AbsoluteNamesAreRefused) {
    ExpectRefused({"\\x", "/x", "\\\\server\\share\\x", "//server/share/x", "\\\\?\\C:\\x",
                   "\\\\.\\C:", "C:\\x", "C:/x", "c:x", "C:"});
}

TEST(CabinetNames, NamesThatClimbAreRefused) {
    ExpectRefused({"..", "..\\x", "../x", "a\\..\\..\\x", "a/../x", "a\\..", ".. \\x", "...\\x",
                   ". .\\x", ".\\x", "."});
}

TEST(CabinetNames, EmptyPartsAreRefused) {
    ExpectRefused({"", "a\\\\b", "a//b", "a\\", "a/", "\\", " ", ". ", "a\\ \\b"});
}

TEST(CabinetNames, DevicesAreRefusedWithAndWithoutExtension) {
    ExpectRefused({"CON",        "con",      "PRN",    "AUX",     "NUL",       "nul.txt",
                   "NUL.tar.gz", "nul .txt", "con.",   "con ",    "CON. .",    "COM1",
                   "com9.log",   "LPT1",     "lpt9.x", "COM\xB9", "LPT\xB2.x", "CONIN$",
                   "conout$",    "CLOCK$",   "a\\nul", "nul\\a",  "a/Aux.h/b"});
}

TEST(CabinetNames, NamesThatOnlyBeginLikeADeviceAreKept) {
    for (const char* name : {"CONSOLE", "nul1", "COM", "COM10", "LPTX", "auxiliary.txt", "xnul"}) {
        EXPECT_EQ(Under(name), std::string("C:\\Out\\") + name);
    }
}

TEST(CabinetNames, StreamsWildcardsAndControlCharactersAreRefused) {
    ExpectRefused({"a:b", "a.txt:stream", "a::$DATA", "a*", "a?b", "a<b", "a>b", "a|b", "a\"b",
                   "a\nb", "\x01", "a\x1F", "a\x7F", std::string("a\0b", 3)});
}

TEST(CabinetNames, DotsAndBlanksAtTheEndAreDropped) {
    EXPECT_EQ(Under("a. \\b .txt. ."), "C:\\Out\\a\\b .txt");
    EXPECT_EQ(Under(" a"), "C:\\Out\\ a");
    EXPECT_EQ(Under(".hidden"), "C:\\Out\\.hidden");
    EXPECT_EQ(Under("..a"), "C:\\Out\\..a");
}

TEST(CabinetNames, LettersBeyondAsciiAreKept) {
    EXPECT_EQ(Under("\xC4rger\\\xFC.txt"), "C:\\Out\\\xC4rger\\\xFC.txt");
}

TEST(CabinetNames, BareNameAndFoldersAreParted) {
    EXPECT_EQ(BareName("a\\b/c.txt"), "c.txt");
    EXPECT_EQ(FolderPart("a\\b/c.txt"), "a\\b");
    EXPECT_EQ(BareName("c.txt"), "c.txt");
    EXPECT_EQ(FolderPart("c.txt"), "");
    EXPECT_EQ(BareName("a\\"), "");
}

TEST(CabinetNames, AFileIsWantedByFullOrBareNameWithoutCase) {
    EXPECT_TRUE(IsWanted("a\\B.txt", ""));
    EXPECT_TRUE(IsWanted("a\\B.txt", "A\\b.TXT"));
    EXPECT_TRUE(IsWanted("a\\B.txt", "a/b.txt"));
    EXPECT_TRUE(IsWanted("a\\B.txt", "b.txt"));
    EXPECT_FALSE(IsWanted("a\\B.txt", "a"));
    EXPECT_FALSE(IsWanted("a\\B.txt", "B"));
    EXPECT_FALSE(IsWanted("x\\a\\B.txt", "a\\B.txt"));
}

TEST(CabinetNames, SecondBytesOfCharactersAreNeitherSeparatorsNorForbidden) {
    const headless::CodePage japanese(932);
    EXPECT_EQ(Under("\x83\\a\x94|\\\x95\\"), "C:\\Out\\\x83\\a\x94|\\\x95\\");
    EXPECT_EQ(BareName("a\\b\x83\\c.txt"), "b\x83\\c.txt");
    EXPECT_EQ(FolderPart("a\\b\x83\\c.txt"), "a");
    EXPECT_EQ(FolderPart("\x83\\"), "");
    EXPECT_EQ(PathUnder("C:\\\x83\\", "x"), "C:\\\x83\\\\x");
    EXPECT_EQ(PathUnder("C:\\\x83\\\\", "x"), "C:\\\x83\\\\x");
}

TEST(CabinetNames, LeadBytesHideNoWayUp) {
    const headless::CodePage japanese(932);
    ExpectRefused({"a\x83/../..\\x", "a\\..\\x", "a/../x", "\x83:x", "a\x83\\\\..\\x"});
}

TEST(CabinetNames, AFileIsWantedWithoutRegardToTheCaseOfAnyLetter) {
    EXPECT_TRUE(IsWanted("\xC4rger.txt", "\xE4RGER.TXT"));
    EXPECT_TRUE(IsWanted("\xC4\\b.txt", "\xE4/B.txt"));
    const headless::CodePage japanese(932);
    EXPECT_FALSE(IsWanted("\xC4.txt", "\xE4.txt"));
    EXPECT_TRUE(IsWanted("\x82\x60.txt", "\x82\x81.TXT"));
    // The second bytes look like "A" and "a"; the characters are two others.
    EXPECT_FALSE(
        IsWanted("\x83"
                 "A.txt",
                 "\x83"
                 "a.txt"));
}

}  // namespace
}  // namespace swiftpatch
