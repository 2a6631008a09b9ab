#include <gtest/gtest.h>

#include "components/clsIniFile.h"
#include "win32/files.h"

namespace swiftpatch::real_system {
namespace {

class RealIniFile : public testing::Test {
protected:
    /// A file with this text that the component works on.
    void Put(const std::string& text) { ini.SetINIFile(place.Put("app.ini", text)); }
    std::string Bytes() const { return ReadFile(ini.INIFile()); }

    Workplace place;
    clsIniFile ini;
};

TEST_F(RealIniFile, WhatIsWrittenIsRead) {
    ini.CreateIni(place.Out() + "\\", "\\app.ini");
    EXPECT_FALSE(std::filesystem::exists(ini.INIFile()));
    ini.WriteFile("Section", "key", "value");
    EXPECT_EQ(ini.GetKey("Section", "key", "default"), "value");
    EXPECT_EQ(ini.GetKey("SECTION", "KEY", "default"), "value");
    EXPECT_EQ(Bytes(), "[Section]\r\nkey=value\r\n");
}

TEST_F(RealIniFile, MissingFileSectionOrKeyGivesTheDefault) {
    ini.SetINIFile(place.PathOf("none.ini"));
    EXPECT_EQ(ini.GetKey("Section", "key", "default"), "default");
    EXPECT_FALSE(std::filesystem::exists(ini.INIFile()));
    Put("[Section]\r\nkey=value\r\nempty=\r\n");
    EXPECT_EQ(ini.GetKey("Section", "other", "default"), "default");
    EXPECT_EQ(ini.GetKey("Other", "key", "default"), "default");
    EXPECT_EQ(ini.GetKey("Section", "empty", "default"), "");
}

TEST_F(RealIniFile, DefaultLosesTheBlanksAtItsEnd) {
    ini.SetINIFile(place.PathOf("none.ini"));
    EXPECT_EQ(ini.GetKey("Section", "key", " d  "), " d");
    EXPECT_EQ(ini.GetKey("Section", "key", "d\t"), "d\t");
    EXPECT_EQ(ini.GetKey("Section", "key", "   "), " ");
}

TEST_F(RealIniFile, WriteToAReadOnlyFileIsSilent) {
    Put("[Section]\r\nkey=value\r\n");
    MarkReadOnly(ini.INIFile(), true);
    const std::string expected = IsWritable(ini.INIFile()) ? "changed" : "value";
    ini.WriteFile("Section", "key", "changed");
    EXPECT_EQ(Bytes(), "[Section]\r\nkey=" + expected + "\r\n");
    EXPECT_EQ(ini.GetKey("Section", "key", ""), expected);
    MarkReadOnly(ini.INIFile(), false);
}

TEST_F(RealIniFile, FileThatIsHeldGivesTheDefaultAndAWriteIsSilent) {
    Put("[Section]\r\nkey=value\r\n");
    {
        const HeldFile held(ini.INIFile());
        ini.WriteFile("Section", "key", "changed");
        EXPECT_EQ(ini.GetKey("Section", "key", "default"), "default");
    }
    EXPECT_EQ(ini.GetKey("Section", "key", "default"), "value");
}

TEST_F(RealIniFile, WriteIntoAMissingFolderIsSilent) {
    ini.SetINIFile(place.PathOf("none\\app.ini"));
    ini.WriteFile("Section", "key", "value");
    EXPECT_EQ(ini.GetKey("Section", "key", "default"), "default");
}

TEST_F(RealIniFile, SectionAndKeyMayHoldBlanks) {
    ini.SetINIFile(place.PathOf("app.ini"));
    ini.WriteFile("My Section", "my key", "my value");
    EXPECT_EQ(ini.GetKey("My Section", "my key", ""), "my value");
    Put("[My Section]\r\n  my key  =  my value  \r\n");
    EXPECT_EQ(ini.GetKey("My Section", "my key", ""), "my value");
}

TEST_F(RealIniFile, ThePlatformStripsQuotes) {
    Put("[Section]\r\ndouble=\" value \"\r\nsingle=' value '\r\nopen=\"value\r\n");
    EXPECT_EQ(ini.GetKey("Section", "double", ""), " value ");
    EXPECT_EQ(ini.GetKey("Section", "single", ""), " value ");
    EXPECT_EQ(ini.GetKey("Section", "open", ""), "\"value");
}

TEST_F(RealIniFile, ValueIsCutAfter255Characters) {
    const std::string exact(255, 'x');
    const std::string longer(300, 'y');
    ini.SetINIFile(place.PathOf("app.ini"));
    ini.WriteFile("Section", "exact", exact);
    ini.WriteFile("Section", "longer", longer);
    EXPECT_EQ(ini.GetKey("Section", "exact", ""), exact);
    EXPECT_EQ(ini.GetKey("Section", "longer", ""), longer.substr(0, 255));
    EXPECT_EQ(ini.GetKey("Section", "none", longer), longer.substr(0, 255));
}

TEST_F(RealIniFile, EmptyPathIsSilent) {
    EXPECT_NO_THROW(ini.WriteFile("SwiftPatch test", "key", ""));
    EXPECT_NO_THROW(ini.GetKey("SwiftPatch test", "none", "default"));
}

TEST_F(RealIniFile, LettersOfTheCodePageAreKept) {
    ini.SetINIFile(place.PathOf("app.ini"));
    ini.WriteFile("Section", "key", "\xE4\xF6\xFC");
    EXPECT_EQ(ini.GetKey("Section", "key", ""), "\xE4\xF6\xFC");
}

}  // namespace
}  // namespace swiftpatch::real_system
