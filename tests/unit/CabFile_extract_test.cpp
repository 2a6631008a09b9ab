#include "components/folders.h"
#include "runtime/headless/code_page.h"
#include "unit/CabFile_test.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

class CabFileExtract : public CabinetTest {
protected:
    std::vector<std::string> FoldersMade() const { return world.trace.StartingWith("MkDir "); }
};

TEST_F(CabFileExtract, ExtractsAllFilesWithTheirFolders) {
    Add("one.txt", "1");
    Add("a\\b/two.txt", "2");
    cab.Extract("C:\\Out");
    EXPECT_EQ(BytesOf("C:\\Out\\one.txt"), "1");
    EXPECT_EQ(BytesOf("C:\\Out\\a\\b\\two.txt"), "2");
    EXPECT_TRUE(world.disk.folders.contains("C:\\Out\\a\\b"));
    EXPECT_THAT(Answers(17), ElementsAre("1", "1"));
    EXPECT_THAT(Answers(19), ElementsAre("0", "0"));
}

TEST_F(CabFileExtract, EventsTellNameSizeTimeAndPlace) {
    Add("a\\one.txt", "12345");
    std::vector<std::string> events;
    cab.BeforeExtract = [&](const std::string& name, std::uint32_t size, DateTime time,
                            const std::string& output, bool& cancel) {
        EXPECT_EQ(time, MakeDateTime({2026, 3, 10, 12, 16, 14}));
        EXPECT_FALSE(cancel);
        events.push_back(name + " " + std::to_string(size) + " -> " + output);
    };
    cab.AfterExtract = [&](const std::string& output) { events.push_back("done " + output); };
    cab.Extract("C:\\Out\\");
    EXPECT_THAT(events,
                ElementsAre("a\\one.txt 5 -> C:\\Out\\a\\one.txt", "done C:\\Out\\a\\one.txt"));
}

TEST_F(CabFileExtract, CancelSkipsThatFileAndMakesNoFolder) {
    Add("a\\one.txt", "1");
    Add("two.txt", "2");
    int after = 0;
    cab.BeforeExtract = [](const std::string& name, std::uint32_t, DateTime, const std::string&,
                           bool& cancel) { cancel = name == "a\\one.txt"; };
    cab.AfterExtract = [&](const std::string&) { ++after; };
    cab.Extract("C:\\Out");
    EXPECT_EQ(BytesOf("C:\\Out\\a\\one.txt"), "missing");
    EXPECT_EQ(BytesOf("C:\\Out\\two.txt"), "2");
    EXPECT_FALSE(world.disk.folders.contains("C:\\Out\\a"));
    EXPECT_EQ(after, 1);
}

TEST_F(CabFileExtract, FileToExtractSelectsByFullOrBareNameWithoutCase) {
    Add("a\\one.txt", "1");
    Add("b\\One.txt", "2");
    Add("two.txt", "3");
    cab.Extract("C:\\Out", "B\\ONE.TXT");
    EXPECT_THAT(world.disk.Names(), ElementsAre("c:\\out\\b\\one.txt"));
    cab.Extract("C:\\Out", "one.TXT");
    EXPECT_THAT(world.disk.Names(), ElementsAre("c:\\out\\a\\one.txt", "c:\\out\\b\\one.txt"));
}

TEST_F(CabFileExtract, FileToExtractThatIsNotThereExtractsNothing) {
    Add("one.txt");
    cab.Extract("C:\\Out", "none.txt");
    EXPECT_THAT(Answers(17), ElementsAre("2"));
    EXPECT_THAT(world.disk.Names(), ElementsAre());
}

TEST_F(CabFileExtract, UnsafeNameFailsThatFileAndTheOthersAreExtracted) {
    Add("..\\evil.txt", "x");
    Add("good.txt", "1");
    int before = 0;
    cab.BeforeExtract = BeforeAny([&] { ++before; });
    const RuntimeError error = ErrorRaisedBy([&] { cab.Extract("C:\\Out"); });
    EXPECT_EQ(error.Number(), 123);
    EXPECT_EQ(error.Description(),
              "The filename, directory name, or volume label syntax is incorrect.");
    EXPECT_EQ(error.Source(), "CabFile");
    EXPECT_THAT(world.disk.Names(), ElementsAre("c:\\out\\good.txt"));
    EXPECT_EQ(before, 1);
}

TEST_F(CabFileExtract, UnsafeNameThatIsNotWantedIsNoFailure) {
    Add("..\\evil.txt", "x");
    Add("good.txt", "1");
    EXPECT_NO_THROW(cab.Extract("C:\\Out", "good.txt"));
}

TEST_F(CabFileExtract, PathBeyondThePlatformsLimitFailsThatFile) {
    Add(std::string(253, 'n'), "x");
    Add("short", "1");
    const RuntimeError error = ErrorRaisedBy([&] { cab.Extract("C:\\Out"); });
    EXPECT_EQ(error.Number(), 111);
    EXPECT_EQ(error.Description(), "The file name is too long.");
    EXPECT_THAT(Answers(17), ElementsAre("2", "1"));
}

TEST_F(CabFileExtract, LongestPathOfThePlatformIsExtracted) {
    const std::string name(259 - std::string("C:\\Out\\").size(), 'n');
    Add(name, "1");
    cab.Extract("C:\\Out");
    EXPECT_EQ(BytesOf("C:\\Out\\" + name), "1");
}

TEST_F(CabFileExtract, TheFirstFailedFileGivesTheError) {
    Add("a:b");
    Add(std::string(300, 'n'));
    EXPECT_EQ(ErrorRaisedBy([&] { cab.Extract("C:\\Out"); }).Number(), 123);
}

TEST_F(CabFileExtract, FailureOfAnEarlierCallIsForgotten) {
    Add("a:b");
    EXPECT_EQ(ErrorRaisedBy([&] { cab.Extract("C:\\Out"); }).Number(), 123);
    EXPECT_NO_THROW(cab.Extract("C:\\Out", "none"));
}

TEST_F(CabFileExtract, FileThatThePlatformCouldNotWriteEndsTheWalkWithItsError) {
    cabinet.Add(headless::CabinetFile{.name = "one.txt", .bytes = "1", .extractError = 112});
    int after = 0;
    cab.AfterExtract = [&](const std::string&) { ++after; };
    const RuntimeError error = ErrorRaisedBy([&] { cab.Extract("C:\\Out"); });
    EXPECT_EQ(error.Number(), 112);
    EXPECT_EQ(error.Description(), "There is not enough space on the disk.");
    EXPECT_EQ(after, 0);
    EXPECT_THAT(Answers(19), ElementsAre("112"));
}

TEST_F(CabFileExtract, FoldersArePartedBetweenCharactersOfTwoBytes) {
    const headless::CodePage japanese(932);
    Add("a\x83\\\\b\x83\\.txt", "1");
    cab.Extract("C:\\Out\\\x95\\");
    EXPECT_EQ(BytesOf("C:\\Out\\\x95\\\\a\x83\\\\b\x83\\.txt"), "1");
    EXPECT_THAT(world.disk.folders,
                ElementsAre("C:", "C:\\Out", "C:\\Out\\\x95\\", "C:\\Out\\\x95\\\\a\x83\\"));
}

TEST_F(CabFileExtract, FolderOfManyFilesIsMadeOnce) {
    for (const char* name : {"a\\1", "a\\2", "b\\3", "a\\4"}) {
        Add(name);
    }
    cab.Extract("C:\\Out");
    EXPECT_THAT(FoldersMade(),
                ElementsAre("MkDir C:\\Out\\a", "MkDir C:\\Out\\b", "MkDir C:\\Out\\a"));
    world.trace.Clear();
    cab.Extract("C:\\Out", "1");
    EXPECT_THAT(FoldersMade(), ElementsAre("MkDir C:\\Out\\a"));
}

TEST_F(CabFileExtract, FolderThatCouldNotBeMadeIsTriedAgainForTheNextFile) {
    Add("a\\1", "1");
    Add("a\\2", "2");
    world.disk.Fail("MkDir", error_number::kDiskNotReady);
    EXPECT_EQ(ErrorRaisedBy([&] { cab.Extract("C:\\Out"); }).Number(), 82);
    EXPECT_THAT(world.disk.Names(), ElementsAre("c:\\out\\a\\2"));
}

TEST_F(CabFileExtract, EmptyOutputPathIsNoFolder) {
    Add("one.txt");
    const RuntimeError error = ErrorRaisedBy([&] { cab.Extract(""); });
    EXPECT_EQ(error.Number(), 3);
    EXPECT_EQ(error.Description(), "The system cannot find the path specified.");
    EXPECT_EQ(error.Source(), "CabFile");
    EXPECT_THAT(world.trace.Lines(), ElementsAre());
}

TEST_F(CabFileExtract, SlashesOfTheOutputPathAreTakenAsBackslashes) {
    Add("one.txt", "1");
    cab.Extract("C:/New/Deeper/");
    EXPECT_EQ(BytesOf("C:\\New\\Deeper\\one.txt"), "1");
    EXPECT_TRUE(world.disk.folders.contains("C:\\New\\Deeper"));
}

TEST_F(CabFileExtract, FolderThatCannotBeMadeFailsThatFile) {
    Add("a\\one.txt", "1");
    Add("two.txt", "2");
    world.disk.Fail("MkDir", error_number::kDiskNotReady);
    const RuntimeError error = ErrorRaisedBy([&] { cab.Extract("C:\\Out"); });
    EXPECT_EQ(error.Number(), 82);
    EXPECT_EQ(error.Description(), "The directory or file cannot be created.");
    EXPECT_THAT(world.disk.Names(), ElementsAre("c:\\out\\two.txt"));
}

TEST_F(CabFileExtract, FolderIsMadeInOneCallWhereItsParentIsThere) {
    EXPECT_TRUE(MakeFolders("C:\\Out\\a"));
    EXPECT_THAT(FoldersMade(), ElementsAre("MkDir C:\\Out\\a"));
}

TEST_F(CabFileExtract, FolderThatExistsIsGood) {
    EXPECT_TRUE(MakeFolders("C:\\Out"));
    EXPECT_THAT(FoldersMade(), ElementsAre("MkDir C:\\Out"));
}

TEST_F(CabFileExtract, MissingParentsAreMadeLevelByLevelWithoutTheDrive) {
    EXPECT_TRUE(MakeFolders("C:\\Out\\a\\b"));
    EXPECT_THAT(FoldersMade(), ElementsAre("MkDir C:\\Out\\a\\b", "MkDir C:\\Out",
                                           "MkDir C:\\Out\\a", "MkDir C:\\Out\\a\\b"));
}

TEST_F(CabFileExtract, ServerAndShareAreNoLevels) {
    world.disk.folders = {"\\\\server\\share"};
    EXPECT_TRUE(MakeFolders("\\\\server\\share\\a\\b"));
    EXPECT_THAT(FoldersMade(),
                ElementsAre("MkDir \\\\server\\share\\a\\b", "MkDir \\\\server\\share\\a",
                            "MkDir \\\\server\\share\\a\\b"));
}

TEST_F(CabFileExtract, AnyOtherErrorOfALevelFails) {
    world.disk.Fail("MkDir", error_number::kPermissionDenied, 2);
    EXPECT_FALSE(MakeFolders("C:\\Out\\a\\b"));
    EXPECT_EQ(FoldersMade().size(), 2U);
}

TEST_F(CabFileExtract, LevelWhoseParentIsStillMissingFails) {
    EXPECT_FALSE(MakeFolders("Z:\\a\\b"));
}

TEST_F(CabFileExtract, RelativePathsHaveNoDrivePart) {
    world.disk.folders = {"a"};
    EXPECT_TRUE(MakeFolders("a\\b\\c"));
    EXPECT_THAT(FoldersMade(),
                ElementsAre("MkDir a\\b\\c", "MkDir a", "MkDir a\\b", "MkDir a\\b\\c"));
}

}  // namespace
}  // namespace swiftpatch
