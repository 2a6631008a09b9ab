#include "install/modVersion.h"
#include "runtime/runtime_error.h"
#include "unit/check_support.h"

namespace swiftpatch {
namespace {

using modVersion::FileVersionRecord;
using modVersion::GetFileVersion;

class modVersionOfAFile : public ProgramTest {
protected:
    FileVersionRecord Read(const std::string& name) {
        FileVersionRecord record;
        world.Dispatch([&] { record = GetFileVersion(world.PathOf(name)); });
        return record;
    }

    static void ExpectEmpty(const FileVersionRecord& record) {
        EXPECT_EQ(record.StrucVersion + record.FileVersion + record.ProductVersion +
                      record.FileFlags + record.FileOS + record.FileType + record.FileSubtype,
                  "");
    }

    static std::string Corrupt(const std::string& path) {
        return Box("No version information available for\r\n'" + path +
                   "'\r\n\r\nThe file is probably corrupt.\r\n\r\nDeleting '" + path + "'");
    }

    static std::string Missing(const std::string& path) {
        return Box("No version information available for\r\n'" + path +
                   "'\r\n\r\nThe file does not exist.\r\n\r\nDownloading '" + path + "'");
    }
};

TEST_F(modVersionOfAFile, IsReadSilently) {
    world.AddFile("tolvex.exe", headless::Build("3.0.12.5", 100));
    const FileVersionRecord record = Read("tolvex.exe");
    EXPECT_EQ(record.ProductVersion, "3.00.12.05");
    EXPECT_EQ(record.FileVersion, "3.00.12.05");
    EXPECT_TRUE(world.trace.Lines().empty());
}

TEST_F(modVersionOfAFile, ShowsABuildOf40000AsNegative) {
    world.AddFile("tolvex.exe", headless::Build("3.0.40000.5", 100));
    EXPECT_EQ(Read("tolvex.exe").ProductVersion, "3.00.-25536.05");
}

TEST_F(modVersionOfAFile, ThatIsATextDeletesIt) {
    world.AddFile("text.exe", "This is no program.");
    world.user.Answer("The file is probably corrupt.");
    ExpectEmpty(Read("text.exe"));
    EXPECT_EQ(Joined(world.trace.Lines()),
              Joined({Corrupt("C:\\Tolvex\\text.exe"), "Kill C:\\Tolvex\\text.exe"}));
    EXPECT_EQ(world.disk.Find(world.PathOf("text.exe")), nullptr);
}

TEST_F(modVersionOfAFile, ThatIsMissingSaysSoAndDeletesNothing) {
    world.user.Answer("The file does not exist.");
    ExpectEmpty(Read("tolvex.exe"));
    EXPECT_EQ(Joined(world.trace.Lines()), Missing("C:\\Tolvex\\tolvex.exe"));
}

TEST_F(modVersionOfAFile, ThatIsHiddenCountsAsMissing) {
    world.AddFile("text.exe", "This is no program.").hidden = true;
    world.user.Answer("The file does not exist.");
    ExpectEmpty(Read("text.exe"));
    EXPECT_NE(world.disk.Find(world.PathOf("text.exe")), nullptr);
}

TEST_F(modVersionOfAFile, ThatGoesWhileTheBoxIsOpenIsNotDeleted) {
    world.AddFile("text.exe", "This is no program.");
    world.user.Answer("The file is probably corrupt.", MsgBoxAnswer::kOk,
                      [this] { world.disk.Remove(world.PathOf("text.exe")); });
    ExpectEmpty(Read("text.exe"));
    EXPECT_TRUE(world.trace.StartingWith("Kill").empty());
}

TEST_F(modVersionOfAFile, ThatComesWhileTheBoxIsOpenIsDeleted) {
    world.user.Answer("The file does not exist.", MsgBoxAnswer::kOk,
                      [this] { world.AddFile("text.exe", "This is no program."); });
    ExpectEmpty(Read("text.exe"));
    EXPECT_EQ(world.disk.Find(world.PathOf("text.exe")), nullptr);
}

TEST_F(modVersionOfAFile, ThatCannotBeReadIsEmptySilently) {
    world.AddFile("tolvex.exe", headless::Build("3.0.12.5", 100));
    world.machine.versionReadFails = true;
    ExpectEmpty(Read("tolvex.exe"));
    EXPECT_TRUE(world.trace.Lines().empty());
    EXPECT_NE(world.disk.Find(world.PathOf("tolvex.exe")), nullptr);
}

TEST_F(modVersionOfAFile, ThatHasNoRootBlockIsEmptySilently) {
    world.AddFile("tolvex.exe", headless::Build("3.0.12.5", 100));
    world.machine.versionQueryFails = true;
    ExpectEmpty(Read("tolvex.exe"));
    EXPECT_TRUE(world.trace.Lines().empty());
    EXPECT_NE(world.disk.Find(world.PathOf("tolvex.exe")), nullptr);
}

TEST_F(modVersionOfAFile, ThatIsHeldForAMomentIsWaitedFor) {
    world.AddFile("tolvex.exe", headless::Build("3.0.12.5", 100)).lockedUntil = 1500;
    EXPECT_EQ(Read("tolvex.exe").ProductVersion, "3.00.12.05");
    EXPECT_TRUE(world.trace.Lines().empty());
}

TEST_F(modVersionOfAFile, ThatStaysHeldIsWaitedForTwoSeconds) {
    world.AddFile("tolvex.exe", headless::Build("3.0.12.5", 100)).lockedUntil = 100000;
    world.user.Answer("The file is probably corrupt.", MsgBoxAnswer::kOk,
                      [this] { EXPECT_EQ(world.uptime, 2000); });
    world.user.Answer("Run-time error '75'");
    Read("tolvex.exe");
    EXPECT_NE(world.disk.Find(world.PathOf("tolvex.exe")), nullptr);
}

TEST_F(modVersionOfAFile, ThatIsLetGoWhileTheBoxIsOpenIsReadAndNotDeleted) {
    headless::File& file = world.AddFile("tolvex.exe", headless::Build("3.0.12.5", 100));
    file.lockedUntil = 100000;
    world.user.Answer("The file is probably corrupt.", MsgBoxAnswer::kOk,
                      [&file] { file.lockedUntil = 0; });
    EXPECT_EQ(Read("tolvex.exe").ProductVersion, "3.00.12.05");
    EXPECT_NE(world.disk.Find(world.PathOf("tolvex.exe")), nullptr);
}

TEST_F(modVersionOfAFile, ThatCannotBeDeletedRaisesToItsCaller) {
    world.AddFile("text.exe", "This is no program.").held = true;
    world.user.Answer("The file is probably corrupt.");
    std::int32_t raised = 0;
    world.Dispatch([&] {
        try {
            GetFileVersion(world.PathOf("text.exe"));
        } catch (const RuntimeError& error) {
            raised = error.Number();
        }
    });
    EXPECT_EQ(raised, error_number::kPathFileAccess);
}

}  // namespace
}  // namespace swiftpatch
