#include "app/settings.h"

#include "shared/branding.h"
#include "shared/paths.h"
#include "shared/shared_state.h"
#include "unit/program_test.h"

namespace swiftpatch {
namespace {

class Settings : public ProgramTest {
protected:
    /// Loads a data file with those lines in its section.
    void Load(const std::string& lines) {
        world.AddFile("tolvex.dta.txt", "[Updates]\r\n" + lines);
        LoadSettings();
    }

    std::string FolderFrom(const std::string& value) {
        Load("ServerDownloadPath=" + value + "\r\n");
        return shared.ServerDownloadPath;
    }
};

TEST_F(Settings, MissingFileGivesTheDefaultFolder) {
    LoadSettings();
    EXPECT_EQ(shared.ServerDownloadPath, SWIFTPATCH_DEFAULT_SERVER);
}

TEST_F(Settings, DefaultFolderHasNoSchemeAndEndsInDownload) {
    LoadSettings();
    EXPECT_TRUE(shared.ServerDownloadPath.ends_with("/download/"));
    EXPECT_EQ(shared.ServerDownloadPath.find("://"), std::string::npos);
}

TEST_F(Settings, MissingKeyGivesTheDefaultFolder) {
    Load("Other=1\r\n");
    EXPECT_EQ(shared.ServerDownloadPath, SWIFTPATCH_DEFAULT_SERVER);
}

TEST_F(Settings, KeyOfAnotherSectionDoesNotCount) {
    world.AddFile("tolvex.dta.txt", "[Other]\r\nServerDownloadPath=files\r\n");
    LoadSettings();
    EXPECT_EQ(shared.ServerDownloadPath, SWIFTPATCH_DEFAULT_SERVER);
}

TEST_F(Settings, SlashIsAppendedWhereTheValueHasNone) {
    EXPECT_EQ(FolderFrom("files/upd"), "files/upd/");
}

TEST_F(Settings, SecondSlashIsNotAppended) { EXPECT_EQ(FolderFrom("files/upd/"), "files/upd/"); }

TEST_F(Settings, BackslashAtTheEndIsNoSlash) {
    EXPECT_EQ(FolderFrom("files\\upd\\"), "files\\upd\\/");
}

TEST_F(Settings, EmptyValueGivesASlash) { EXPECT_EQ(FolderFrom(""), "/"); }

TEST_F(Settings, ValueOf255CharactersIsKept) {
    const std::string value(255, 'a');
    EXPECT_EQ(FolderFrom(value), value + "/");
}

TEST_F(Settings, ValueOf256CharactersIsCutTo255) {
    EXPECT_EQ(FolderFrom(std::string(255, 'a') + "b"), std::string(255, 'a') + "/");
}

TEST_F(Settings, ValueOf5000CharactersIsCutTo255) {
    EXPECT_EQ(FolderFrom(std::string(5000, 'a')), std::string(255, 'a') + "/");
}

TEST_F(Settings, CutValueThatEndsInASlashGetsNoOther) {
    EXPECT_EQ(FolderFrom(std::string(254, 'a') + "/cut"), std::string(254, 'a') + "/");
}

TEST_F(Settings, PrefixIsRemoved) {
    EXPECT_EQ(FolderFrom("serverdownloadpath=files/upd"), "files/upd/");
}

TEST_F(Settings, PrefixIsRemovedAfterTheSlashWasAppended) {
    // The other way round the value would be empty, or end in two slashes.
    EXPECT_EQ(FolderFrom("serverdownloadpath="), "/");
    EXPECT_EQ(FolderFrom("files/serverdownloadpath="), "files//");
}

TEST_F(Settings, EveryOccurrenceOfThePrefixIsRemoved) {
    EXPECT_EQ(FolderFrom("serverdownloadpath=a/serverdownloadpath=b"), "a/b/");
}

TEST_F(Settings, WhatARemovalPutsTogetherStays) {
    EXPECT_EQ(FolderFrom("serverdownloadserverdownloadpath=path=a"), "serverdownloadpath=a/");
}

TEST_F(Settings, PrefixInOtherLetterCaseStays) {
    EXPECT_EQ(FolderFrom("ServerDownloadPath=files"), "ServerDownloadPath=files/");
    EXPECT_EQ(FolderFrom("SERVERDOWNLOADPATH=files"), "SERVERDOWNLOADPATH=files/");
}

TEST_F(Settings, SchemeIsNeitherAddedNorRemoved) {
    EXPECT_EQ(FolderFrom("http://host.example/x"), "http://host.example/x/");
}

TEST_F(Settings, InstallAtOnceOnlyWhenTheKeyIsOne) {
    LoadSettings();
    EXPECT_FALSE(shared.InstallAtOnce);
    Load("InstallAtOnce=1\r\n");
    EXPECT_TRUE(shared.InstallAtOnce);
    Load("InstallAtOnce=0\r\n");
    EXPECT_FALSE(shared.InstallAtOnce);
    Load("InstallAtOnce=11\r\n");
    EXPECT_FALSE(shared.InstallAtOnce);
    Load("InstallAtOnce=\r\n");
    EXPECT_FALSE(shared.InstallAtOnce);
}

TEST_F(Settings, BackupsAreOfferedOnlyWhenTheKeyIsOne) {
    LoadSettings();
    EXPECT_FALSE(shared.OfferBackups);
    Load("OfferBackups=1\r\n");
    EXPECT_TRUE(shared.OfferBackups);
    for (const char* value : {"0", "11", "", "yes"}) {
        Load("OfferBackups=" + std::string(value) + "\r\n");
        EXPECT_FALSE(shared.OfferBackups) << value;
    }
}

TEST_F(Settings, LogFileNameIsReadAndEmptyWhenAbsent) {
    Load("LogFileName=errors.log\r\n");
    EXPECT_EQ(shared.LogFileName, "errors.log");
    Load("InstallAtOnce=1\r\n");
    EXPECT_EQ(shared.LogFileName, "");
}

TEST_F(Settings, NothingIsReportedOrWritten) {
    world.trace.Clear();
    Load("ServerDownloadPath=files\r\n");
    EXPECT_TRUE(world.trace.Lines().empty());
}

TEST_F(Settings, PathsAreTheApplicationFolderAndTheName) {
    world.machine.applicationFolder = "D:\\Some Where";
    EXPECT_EQ(AppFile(kSettingsFile), "D:\\Some Where\\tolvex.dta.txt");
    EXPECT_EQ(AppFile(kBusyAnimation), "D:\\Some Where\\filecopy.avi");
    EXPECT_EQ(AppFile(kMainProgram), "D:\\Some Where\\tolvex.exe");
    EXPECT_EQ(AppFile(kStagedBuild), "D:\\Some Where\\tolvex30.exe");
}

TEST_F(Settings, WithoutSigningKeysThereAreNone) {
    Load("InstallAtOnce=1\r\n");
    EXPECT_EQ(shared.SigningKeys, std::nullopt);
}

TEST_F(Settings, SigningKeysAreTakenAsTheyStand) {
    Load("SigningKeys=RWone RWtwo\r\n");
    EXPECT_EQ(shared.SigningKeys, "RWone RWtwo");
}

TEST_F(Settings, SigningKeysWithoutAValueAreThere) {
    Load("SigningKeys=\r\n");
    EXPECT_EQ(shared.SigningKeys, "");
    Load("SigningKeys=   \r\n");
    EXPECT_EQ(shared.SigningKeys, "");
}

TEST_F(Settings, SigningKeysOnADamagedLineAreThere) {
    for (const std::string line :
         {"SigningKeys RWone", "SigningKeys", "SigningKeys: RWone", "\tsigningkeysRWone",
          "[Other]\r\nSigningKeys=RWone", "[Updates]\r\nSIGNINGKEYS=RWone"}) {
        Load("InstallAtOnce=1\r\n" + line + "\r\n");
        EXPECT_TRUE(shared.SigningKeys.has_value()) << line;
    }
    world.AddFile("tolvex.dta.txt", "\xEF\xBB\xBFSigningKeys=RWone");
    LoadSettings();
    EXPECT_EQ(shared.SigningKeys, "");
}

TEST_F(Settings, SigningKeysInACommentAreNone) {
    Load("; SigningKeys=RWone\r\n;SigningKeys=RWtwo\r\n");
    EXPECT_EQ(shared.SigningKeys, std::nullopt);
}

TEST_F(Settings, SigningKeysOfAFileThatNobodyMayReadAreThere) {
    Load("SigningKeys=RWone\r\n");
    headless::File& file = *world.disk.Find(world.PathOf("tolvex.dta.txt"));
    file.lockedUntil = 10000000;
    LoadSettings();
    EXPECT_EQ(shared.SigningKeys, "");
}

TEST_F(Settings, SigningKeysThatAreTooLongAreThere) {
    Load("SigningKeys=" + std::string(300, 'R') + "\r\n");
    EXPECT_EQ(shared.SigningKeys, std::string(255, 'R'));
}

}  // namespace
}  // namespace swiftpatch
