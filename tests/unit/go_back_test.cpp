#include "install/go_back.h"

#include "runtime/runtime_error.h"
#include "shared/shared_state.h"
#include "unit/check_support.h"

namespace swiftpatch {
namespace {

using headless::Build;

/// A machine with an installed build of version 3.0.12.5.
class GoBackFiles : public WindowTest {
protected:
    GoBackFiles() {
        shared.OfferBackups = true;
        world.AddFile("tolvex.exe", installed);
    }

    /// A backup as an install makes it.
    headless::File& Keep(const std::string& name, const std::string& version) {
        return world.AddFile("tolvex." + name + ".exe", Build(version, 300));
    }

    std::int32_t ErrorOf(const std::function<void()>& action) {
        try {
            action();
            return 0;
        } catch (const RuntimeError& error) {
            return error.Number();
        }
    }

    const std::string installed = Build("3.0.12.5", 400);
};

class FindBackupTest : public GoBackFiles {};

TEST_F(FindBackupTest, WithoutAnyIsNone) { EXPECT_EQ(FindBackup(), ""); }

TEST_F(FindBackupTest, TakesTheNewestBelowTheInstalledBuild) {
    Keep("3.00.09.00", "3.0.9.0");
    Keep("3.00.11.00", "3.0.11.0");
    Keep("3.00.10.00", "3.0.10.0");
    EXPECT_EQ(FindBackup(), "3.00.11.00");
}

TEST_F(FindBackupTest, TakesNeitherTheInstalledVersionNorOneAboveIt) {
    Keep("3.00.12.05", "3.0.12.5");
    Keep("3.00.12.06", "3.0.12.6");
    Keep("4.00.00.00", "4.0.0.0");
    EXPECT_EQ(FindBackup(), "");
}

TEST_F(FindBackupTest, ComparesAllPartsAsNumbersFromTheLeft) {
    world.AddFile("tolvex.exe", Build("3.0.0.0", 400));
    Keep("2.99.99.99", "2.99.99.99");
    EXPECT_EQ(FindBackup(), "2.99.99.99");
    world.AddFile("tolvex.exe", Build("3.0.100.0", 400));
    Keep("3.00.99.00", "3.0.99.0");
    Keep("3.00.100.01", "3.0.100.1");
    EXPECT_EQ(FindBackup(), "3.00.99.00");
    world.AddFile("tolvex.exe", Build("3.0.100.2", 400));
    EXPECT_EQ(FindBackup(), "3.00.100.01");
}

TEST_F(FindBackupTest, PartOver32767IsAboveThoseBelowThoughItsTextIsNegative) {
    Keep("3.00.-25536.01", "3.0.40000.1");
    EXPECT_EQ(FindBackup(), "");
    world.AddFile("tolvex.exe", Build("3.1.0.0", 400));
    Keep("3.00.11.00", "3.0.11.0");
    EXPECT_EQ(FindBackup(), "3.00.-25536.01");
}

TEST_F(FindBackupTest, LeavesOutWhatIsDamagedAndLeavesItAlone) {
    Keep("3.00.09.00", "3.0.9.0");
    Keep("3.00.10.00", "3.0.10.0").cutOff = true;
    world.AddFile("tolvex.3.00.11.00.exe", "");
    world.AddFile("tolvex.3.00.11.01.exe", Build("", 300));
    const auto before = world.disk.Names();
    EXPECT_EQ(FindBackup(), "3.00.09.00");
    EXPECT_EQ(world.disk.Names(), before);
    EXPECT_TRUE(world.trace.StartingWith("Kill").empty());
}

TEST_F(FindBackupTest, LeavesOutWhatAnotherVersionIsWrittenIn) {
    Keep("3.00.11.00", "3.0.10.0");
    Keep("3.0.9.0", "3.0.9.0");  // Not as an install writes it.
    Keep("old", "3.0.8.0");
    EXPECT_EQ(FindBackup(), "");
    Keep("3.00.07.00", "3.0.7.0");
    EXPECT_EQ(FindBackup(), "3.00.07.00");
}

TEST_F(FindBackupTest, LeavesOutFilesOfOtherNames) {
    for (const char* name : {"tolvex.exe.3.00.11.00", "tolvex3.00.11.00.exe", "tolvex..exe",
                             "tolvex.3.00.11.00.exe.bak", "tolvex.exe.exe", ".exe", "x"}) {
        world.AddFile(name, Build("3.0.11.0", 300));
    }
    EXPECT_EQ(FindBackup(), "");
}

TEST_F(FindBackupTest, LeavesOutHiddenFilesAndThoseOfOtherFolders) {
    Keep("3.00.11.00", "3.0.11.0").hidden = true;
    world.disk.Add("C:\\Tolvex\\old\\tolvex.3.00.10.00.exe", {Build("3.0.10.0", 300)});
    EXPECT_EQ(FindBackup(), "");
}

TEST_F(FindBackupTest, WaitsForSomebodyWhoReadsABackupAndPassesOverOneThatStaysHeld) {
    Keep("3.00.10.00", "3.0.10.0");
    headless::File& backup = Keep("3.00.11.00", "3.0.11.0");
    backup.lockedUntil = world.uptime + 1500;
    EXPECT_EQ(FindBackup(), "3.00.11.00");
    backup.lockedUntil = world.uptime + 600000;
    EXPECT_EQ(FindBackup(), "3.00.10.00");
}

TEST_F(FindBackupTest, OfManyOpensOnlyTheNewest) {
    for (int build = 0; build < 3000; ++build) {
        Keep("2.00." + std::to_string(100 + build) + ".00",
             "2.0." + std::to_string(100 + build) + ".0")
            .lockedUntil = world.uptime + 600000;
    }
    Keep("3.00.11.00", "3.0.11.0");
    const std::int64_t before = world.uptime;
    EXPECT_EQ(FindBackup(), "3.00.11.00");
    EXPECT_EQ(world.uptime, before);
}

TEST_F(FindBackupTest, InAFolderThatCannotBeReadIsNone) {
    Keep("3.00.11.00", "3.0.11.0");
    world.disk.folders.clear();
    EXPECT_EQ(FindBackup(), "");
}

TEST_F(FindBackupTest, WithoutAnInstalledBuildIsNone) {
    Keep("3.00.11.00", "3.0.11.0");
    world.AddFile("tolvex.exe", Build("", 400));
    EXPECT_EQ(FindBackup(), "");
    world.disk.Remove(world.PathOf("tolvex.exe"));
    EXPECT_EQ(FindBackup(), "");
    EXPECT_TRUE(world.trace.StartingWith("Kill").empty());
}

class WasGoneBackFromTest : public GoBackFiles {
protected:
    WasGoneBackFromTest() { Keep("3.00.13.00", "3.0.13.0"); }
};

TEST_F(WasGoneBackFromTest, IsAKeptVersionAboveTheInstalledOne) {
    EXPECT_TRUE(WasGoneBackFrom("3.00.13.00"));
    EXPECT_FALSE(WasGoneBackFrom("3.00.14.00"));
    world.AddFile("tolvex.exe", Build("3.0.13.0", 400));
    EXPECT_FALSE(WasGoneBackFrom("3.00.13.00"));
    world.AddFile("tolvex.exe", Build("3.0.14.0", 400));
    EXPECT_FALSE(WasGoneBackFrom("3.00.13.00"));
}

TEST_F(WasGoneBackFromTest, NeedsAWholeBackup) {
    world.disk.Find(world.PathOf("tolvex.3.00.13.00.exe"))->cutOff = true;
    EXPECT_FALSE(WasGoneBackFrom("3.00.13.00"));
}

TEST_F(WasGoneBackFromTest, IsNoneWhereTheWayBackIsNotOffered) {
    shared.OfferBackups = false;
    EXPECT_FALSE(WasGoneBackFrom("3.00.13.00"));
}

TEST_F(WasGoneBackFromTest, IsNoneWithoutAnInstalledBuildOrVersion) {
    EXPECT_FALSE(WasGoneBackFrom(""));
    world.disk.Remove(world.PathOf("tolvex.exe"));
    EXPECT_FALSE(WasGoneBackFrom("3.00.13.00"));
}

class KeepInstalledBuildTest : public GoBackFiles {
protected:
    const std::string backup = "tolvex.3.00.12.05.exe";
};

TEST_F(KeepInstalledBuildTest, CopiesItUnderItsVersion) {
    KeepInstalledBuild();
    EXPECT_EQ(Content(backup), installed);
    EXPECT_EQ(Content("tolvex.exe"), installed);
}

TEST_F(KeepInstalledBuildTest, LeavesABackupAsItIs) {
    world.AddFile(backup, Build("3.0.12.5", 999));
    KeepInstalledBuild();
    EXPECT_EQ(Content(backup).size(), 999U);
}

TEST_F(KeepInstalledBuildTest, RefusesToReplaceWhatElseHasTheName) {
    for (const std::string& other : {Build("3.0.1.0", 300), Build("", 300), std::string()}) {
        world.AddFile(backup, other);
        EXPECT_EQ(ErrorOf(KeepInstalledBuild), error_number::kPathFileAccess);
        EXPECT_EQ(Content(backup), other);
    }
}

TEST_F(KeepInstalledBuildTest, OfABuildThatNobodyCanReadIsAnError) {
    world.disk.Find(world.PathOf("tolvex.exe"))->lockedUntil = world.uptime + 600000;
    EXPECT_EQ(ErrorOf(KeepInstalledBuild), error_number::kPathFileAccess);
}

TEST_F(KeepInstalledBuildTest, WithoutABuildKeepsNone) {
    world.disk.Remove(world.PathOf("tolvex.exe"));
    EXPECT_EQ(ErrorOf(KeepInstalledBuild), 0);
}

TEST_F(KeepInstalledBuildTest, PassesOnTheErrorOfTheCopy) {
    world.disk.Fail("FileCopy", error_number::kDiskFull);
    EXPECT_EQ(ErrorOf(KeepInstalledBuild), error_number::kDiskFull);
    EXPECT_EQ(Content(backup), "(no such file)");
}

class GoBackTest : public GoBackFiles {
protected:
    GoBackTest() { Keep("3.00.11.00", "3.0.11.0"); }

    std::int32_t ErrorOfGoingBack() {
        return ErrorOf([] { GoBack("3.00.11.00"); });
    }
    headless::File& Backup() { return *world.disk.Find(world.PathOf("tolvex.3.00.11.00.exe")); }
};

TEST_F(GoBackTest, PutsTheBackupInPlaceAndKeepsIt) {
    EXPECT_EQ(ErrorOfGoingBack(), 0);
    EXPECT_EQ(Content("tolvex.exe"), Build("3.0.11.0", 300));
    EXPECT_EQ(Content("tolvex.3.00.11.00.exe"), Build("3.0.11.0", 300));
    EXPECT_EQ(Backup().locks, 0);
}

TEST_F(GoBackTest, NobodyCanExchangeTheBackupWhileItIsCopied) {
    bool exchanged = true;
    world.withEachCopy = [&](headless::File&) {
        exchanged = world.disk.ChangeFromOutside(world.PathOf("tolvex.3.00.11.00.exe"), "forged");
    };
    EXPECT_EQ(ErrorOfGoingBack(), 0);
    EXPECT_FALSE(exchanged);
    EXPECT_EQ(Content("tolvex.exe"), Build("3.0.11.0", 300));
}

TEST_F(GoBackTest, ToABackupThatWasDamagedMeanwhileChangesNothing) {
    Backup().cutOff = true;
    EXPECT_EQ(ErrorOfGoingBack(), error_number::kFileNotFound);
    world.AddFile("tolvex.3.00.11.00.exe", Build("9.9.9.9", 300));
    EXPECT_EQ(ErrorOfGoingBack(), error_number::kFileNotFound);
    world.disk.Remove(world.PathOf("tolvex.3.00.11.00.exe"));
    EXPECT_EQ(ErrorOfGoingBack(), error_number::kFileNotFound);
    EXPECT_EQ(Content("tolvex.exe"), installed);
}

TEST_F(GoBackTest, ToABackupThatSomebodyMayWriteToChangesNothing) {
    Backup().openUntil = world.uptime + 600000;
    EXPECT_EQ(ErrorOfGoingBack(), error_number::kPermissionDenied);
    EXPECT_EQ(Content("tolvex.exe"), installed);
}

TEST_F(GoBackTest, OverAHeldOrReadOnlyProgramChangesNothing) {
    headless::File& program = *world.disk.Find(world.PathOf("tolvex.exe"));
    program.held = true;
    EXPECT_EQ(ErrorOfGoingBack(), error_number::kPermissionDenied);
    program.held = false;
    program.readOnly = true;
    EXPECT_EQ(ErrorOfGoingBack(), error_number::kPermissionDenied);
    EXPECT_EQ(Content("tolvex.exe"), installed);
}

TEST_F(FindBackupTest, NameThatIsNoVersionIsLeftAlone) {
    for (const char* name : {"tolvex.202611231200.exe", "tolvex.3.00.11.202611231200.exe",
                             "tolvex.3.00.11.exe", "tolvex.3..11.00.exe", "tolvex.-.1.1.1.exe"}) {
        world.AddFile(name, headless::Build("3.0.11.0", 240000));
    }
    EXPECT_EQ(FindBackup(), "");
}

}  // namespace
}  // namespace swiftpatch
