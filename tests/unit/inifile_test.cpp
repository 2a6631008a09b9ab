#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "components/clsIniFile.h"
#include "runtime/headless/profile.h"
#include "runtime/headless/world.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

class IniFile : public testing::Test {
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

TEST_F(IniFile, PathIsEmptyAtFirst) { EXPECT_EQ(ini.INIFile(), ""); }

TEST_F(IniFile, CreateIniJoinsTheTwoPartsByOneBackslash) {
    EXPECT_EQ(PathOf("C:\\", "app.ini"), "C:\\app.ini");
    EXPECT_EQ(PathOf("C:", "app.ini"), "C:\\app.ini");
    EXPECT_EQ(PathOf("C:\\DATA\\\\", "\\\\app.ini"), "C:\\DATA\\app.ini");
    EXPECT_EQ(PathOf("C:\\DATA", "sub\\app.ini\\"), "C:\\DATA\\sub\\app.ini\\");
}

TEST_F(IniFile, EmptyPartsLeaveTheBackslash) {
    EXPECT_EQ(PathOf("", "app.ini"), "\\app.ini");
    EXPECT_EQ(PathOf("\\\\\\", "\\app.ini"), "\\app.ini");
    EXPECT_EQ(PathOf("C:\\", ""), "C:\\");
    EXPECT_EQ(PathOf("", ""), "\\");
}

TEST_F(IniFile, SlashesOfTheOtherKindStay) { EXPECT_EQ(PathOf("C:/", "/a"), "C:/\\/a"); }

TEST_F(IniFile, CreateIniCreatesNoFile) {
    ini.CreateIni("C:\\Tolvex", "app.ini");
    EXPECT_THAT(world.disk.Names(), ElementsAre());
    EXPECT_THAT(world.trace.Lines(), ElementsAre());
}

TEST_F(IniFile, PathThatIsSetIsKeptAsGiven) {
    ini.SetINIFile("\\\\C:\\x\\\\");
    EXPECT_EQ(ini.INIFile(), "\\\\C:\\x\\\\");
}

TEST_F(IniFile, GetKeyGivesTheValueAndElseTheDefault) {
    Put("[One]\r\nkey=value\r\nempty=\r\n");
    EXPECT_EQ(ini.GetKey("One", "key", "default"), "value");
    EXPECT_EQ(ini.GetKey("One", "empty", "default"), "");
    EXPECT_EQ(ini.GetKey("One", "other", " default "), " default ");
    EXPECT_EQ(ini.GetKey("Two", "key", "default"), "default");
    ini.SetINIFile("C:\\Tolvex\\none.ini");
    EXPECT_EQ(ini.GetKey("One", "key", "default"), "default");
}

TEST_F(IniFile, NothingIsKeptBetweenCalls) {
    Put("[One]\r\nkey=value\r\n");
    EXPECT_EQ(ini.GetKey("One", "key", ""), "value");
    world.AddFile("app.ini", "[One]\r\nkey=changed\r\n");
    EXPECT_EQ(ini.GetKey("One", "key", ""), "changed");
}

TEST_F(IniFile, ValueOf255CharactersIsWholeAndALongerOneIsCut) {
    const std::string exact(255, 'x');
    Put("[One]\r\nexact=" + exact + "\r\nlong=" + exact + "yz\r\n");
    EXPECT_EQ(ini.GetKey("One", "exact", ""), exact);
    EXPECT_EQ(ini.GetKey("One", "long", ""), exact);
}

TEST_F(IniFile, DefaultIsCutToTheBufferToo) {
    EXPECT_EQ(ini.GetKey("One", "key", std::string(300, 'd')), std::string(255, 'd'));
}

TEST_F(IniFile, BufferIs256CharactersOfCode1) {
    ini.GetKey("One", "key", "");
    EXPECT_EQ(headless::LastProfileBuffer(), std::string(256, '\1'));
}

TEST_F(IniFile, NothingOfTheFilledBufferIsReturned) {
    Put("[One]\r\nempty=\r\nshort=a\r\n");
    EXPECT_EQ(ini.GetKey("One", "empty", ""), "");
    EXPECT_EQ(ini.GetKey("One", "short", ""), "a");
}

TEST_F(IniFile, CharactersOfCode1InAValueAreReturned) {
    Put(std::string("[One]\r\nkey=a\1b\r\n"));
    EXPECT_EQ(ini.GetKey("One", "key", ""), "a\1b");
}

TEST_F(IniFile, WriteFileWritesOneKeyOfTheFile) {
    ini.SetINIFile("C:\\Tolvex\\app.ini");
    ini.WriteFile("One", "key", "value");
    EXPECT_THAT(world.trace.Lines(),
                ElementsAre("WriteProfile C:\\Tolvex\\app.ini [One] key=value"));
}

TEST_F(IniFile, WriteWithoutAPathUsesAnEmptyFileName) {
    ini.WriteFile("One", "key", "value");
    EXPECT_THAT(world.trace.Lines(), ElementsAre("WriteProfile  [One] key=value"));
}

TEST_F(IniFile, FailedWriteIsSilent) {
    world.disk.Fail("WriteProfile", 75);
    EXPECT_NO_THROW(ini.WriteFile("One", "key", "value"));
}

}  // namespace
}  // namespace swiftpatch
