#include "components/clsIniFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "runtime/headless/code_page.h"
#include "runtime/headless/profile.h"
#include "runtime/headless/world.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

class clsIniFileTest : public testing::Test {
protected:
    std::string PathOf(const std::string& drive, const std::string& directory) {
        ini.CreateIni(drive, directory);
        return ini.INIFile();
    }
    /// A file "C:\Tolvex\app.ini" that the component works on.
    void Put(const std::string& text) {
        world.AddFile("app.ini", text);
        ini.SetINIFile("C:\\Tolvex\\app.ini");
    }

    headless::World world;
    clsIniFile ini;
};

TEST_F(clsIniFileTest, PathIsEmptyAtFirst) { EXPECT_EQ(ini.INIFile(), ""); }

TEST_F(clsIniFileTest, CreateIniJoinsTheTwoPartsByOneBackslash) {
    EXPECT_EQ(PathOf("C:\\", "app.ini"), "C:\\app.ini");
    EXPECT_EQ(PathOf("C:", "app.ini"), "C:\\app.ini");
    EXPECT_EQ(PathOf("C:\\DATA\\\\", "\\\\app.ini"), "C:\\DATA\\app.ini");
    EXPECT_EQ(PathOf("C:\\DATA", "sub\\app.ini\\"), "C:\\DATA\\sub\\app.ini\\");
}

TEST_F(clsIniFileTest, EmptyPartsLeaveTheBackslash) {
    EXPECT_EQ(PathOf("", "app.ini"), "\\app.ini");
    EXPECT_EQ(PathOf("\\\\\\", "\\app.ini"), "\\app.ini");
    EXPECT_EQ(PathOf("C:\\", ""), "C:\\");
    EXPECT_EQ(PathOf("", ""), "\\");
}

TEST_F(clsIniFileTest, SecondByteOfACharacterIsNoBackslash) {
    const headless::CodePage japanese(932);
    EXPECT_EQ(PathOf("C:\\\x83\\", "app.ini"), "C:\\\x83\\\\app.ini");
    EXPECT_EQ(PathOf("C:\\\x83\\\\\\", "app.ini"), "C:\\\x83\\\\app.ini");
}

TEST_F(clsIniFileTest, SlashesOfTheOtherKindStay) { EXPECT_EQ(PathOf("C:/", "/a"), "C:/\\/a"); }

TEST_F(clsIniFileTest, CreateIniCreatesNoFile) {
    ini.CreateIni("C:\\Tolvex", "app.ini");
    EXPECT_THAT(world.disk.Names(), ElementsAre());
    EXPECT_THAT(world.trace.Lines(), ElementsAre());
}

TEST_F(clsIniFileTest, PathThatIsSetIsKeptAsGiven) {
    ini.SetINIFile("\\\\C:\\x\\\\");
    EXPECT_EQ(ini.INIFile(), "\\\\C:\\x\\\\");
}

TEST_F(clsIniFileTest, GetKeyGivesTheValueAndElseTheDefault) {
    Put("[One]\r\nkey=value\r\nempty=\r\n");
    EXPECT_EQ(ini.GetKey("One", "key", "default"), "value");
    EXPECT_EQ(ini.GetKey("One", "empty", "default"), "");
    EXPECT_EQ(ini.GetKey("One", "other", "default"), "default");
    EXPECT_EQ(ini.GetKey("Two", "key", "default"), "default");
    ini.SetINIFile("C:\\Tolvex\\none.ini");
    EXPECT_EQ(ini.GetKey("One", "key", "default"), "default");
}

// As the platform's function does, which is asked; so it is no matter of this component.
TEST_F(clsIniFileTest, DefaultLosesTheBlanksAtItsEnd) {
    EXPECT_EQ(ini.GetKey("One", "key", " d  "), " d");
    EXPECT_EQ(ini.GetKey("One", "key", "d\t"), "d\t");
    EXPECT_EQ(ini.GetKey("One", "key", "   "), " ");
}

TEST_F(clsIniFileTest, NothingIsKeptBetweenCalls) {
    Put("[One]\r\nkey=value\r\n");
    EXPECT_EQ(ini.GetKey("One", "key", ""), "value");
    world.AddFile("app.ini", "[One]\r\nkey=changed\r\n");
    EXPECT_EQ(ini.GetKey("One", "key", ""), "changed");
}

TEST_F(clsIniFileTest, ValueOf255CharactersIsWholeAndALongerOneIsCut) {
    const std::string exact(255, 'x');
    Put("[One]\r\nexact=" + exact + "\r\nlong=" + exact + "yz\r\n");
    EXPECT_EQ(ini.GetKey("One", "exact", ""), exact);
    EXPECT_EQ(ini.GetKey("One", "long", ""), exact);
}

TEST_F(clsIniFileTest, DefaultIsCutToTheBufferToo) {
    EXPECT_EQ(ini.GetKey("One", "key", std::string(300, 'd')), std::string(255, 'd'));
}

TEST_F(clsIniFileTest, BufferIs256CharactersOfCode1) {
    ini.GetKey("One", "key", "");
    EXPECT_EQ(headless::LastProfileBuffer(), std::string(256, '\1'));
}

TEST_F(clsIniFileTest, NothingOfTheFilledBufferIsReturned) {
    Put("[One]\r\nempty=\r\nshort=a\r\n");
    EXPECT_EQ(ini.GetKey("One", "empty", ""), "");
    EXPECT_EQ(ini.GetKey("One", "short", ""), "a");
}

TEST_F(clsIniFileTest, CharactersOfCode1InAValueAreReturned) {
    Put(std::string("[One]\r\nkey=a\1b\r\n"));
    EXPECT_EQ(ini.GetKey("One", "key", ""), "a\1b");
}

TEST_F(clsIniFileTest, WriteFileWritesOneKeyOfTheFile) {
    ini.SetINIFile("C:\\Tolvex\\app.ini");
    ini.WriteFile("One", "key", "value");
    EXPECT_THAT(world.trace.Lines(),
                ElementsAre("WriteProfile C:\\Tolvex\\app.ini [One] key=value"));
}

TEST_F(clsIniFileTest, WriteWithoutAPathUsesAnEmptyFileName) {
    ini.WriteFile("One", "key", "value");
    EXPECT_THAT(world.trace.Lines(), ElementsAre("WriteProfile  [One] key=value"));
}

TEST_F(clsIniFileTest, FailedWriteIsSilent) {
    world.disk.Fail("WriteProfile", 75);
    EXPECT_NO_THROW(ini.WriteFile("One", "key", "value"));
}

}  // namespace
}  // namespace swiftpatch
