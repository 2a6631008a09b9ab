// A file that is locked while it is read, and a copy that is looked at before it takes its place.
#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <optional>
#include <thread>

#include "runtime/files.h"
#include "runtime/internal/unfinished_copy.h"
#include "runtime/runtime_error.h"
#include "win32/files.h"

namespace swiftpatch::real_system {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE OpenAsAnother(const std::string& path, DWORD access) {
    return CreateFileA(path.c_str(), access, kShareAll, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool CanBeOpened(const std::string& path, DWORD access) {
    const HANDLE file = OpenAsAnother(path, access);
    const bool opened = file != INVALID_HANDLE_VALUE;
    if (opened) {
        CloseHandle(file);
    }
    return opened;
}

/// The number of the error that a look at the file ends with; 0 without one.
std::int32_t ErrorOfLocking(const std::string& path) {
    try {
        const LockedFile file(path);
        return 0;
    } catch (const RuntimeError& error) {
        return error.Number();
    }
}

class RealLockedFile : public testing::Test {
protected:
    Workplace place;
    const std::string bytes = std::string(100'000, 'b') + "end";
    const std::string build = place.Put("build.exe", bytes);
    const std::string other = place.Put("other.exe", "forged");
};

TEST_F(RealLockedFile, IsReadFromItsFirstByteToItsLast) {
    LockedFile file(build);
    std::array<std::uint8_t, 30'000> block{};
    std::string read;
    while (const std::size_t count = file.Read(block)) {
        read.append(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(count));
    }
    EXPECT_TRUE(read == bytes);
}

TEST_F(RealLockedFile, CanBeReadByOthersAndNotChangedDeletedRenamedOrReplaced) {
    const LockedFile file(build);
    EXPECT_TRUE(CanBeOpened(build, GENERIC_READ));
    EXPECT_FALSE(CanBeOpened(build, GENERIC_WRITE));
    EXPECT_FALSE(DeleteFileA(build.c_str()));
    EXPECT_FALSE(MoveFileA(build.c_str(), place.PathOf("elsewhere.exe").c_str()));
    EXPECT_FALSE(MoveFileExA(other.c_str(), build.c_str(), MOVEFILE_REPLACE_EXISTING));
    EXPECT_TRUE(ReadFile(build) == bytes);
}

TEST_F(RealLockedFile, IsFreeAgainAfterwards) {
    EXPECT_EQ(ErrorOfLocking(build), 0);
    EXPECT_TRUE(CanBeOpened(build, GENERIC_WRITE));
}

TEST_F(RealLockedFile, ThatAnotherMayWriteToIsPermissionDenied) {
    const HANDLE writer = OpenAsAnother(build, GENERIC_WRITE);
    EXPECT_EQ(ErrorOfLocking(build), error_number::kPermissionDenied);
    CloseHandle(writer);
    EXPECT_EQ(ErrorOfLocking(build), 0);
}

TEST_F(RealLockedFile, ThatIsNotThereIsFileNotFound) {
    EXPECT_EQ(ErrorOfLocking(place.PathOf("none.exe")), error_number::kFileNotFound);
}

TEST_F(RealLockedFile, CanBeTheSourceOfACopy) {
    const LockedFile file(build);
    FileCopy(build, place.PathOf("out\\target.exe"));
    EXPECT_TRUE(ReadFile(place.PathOf("out\\target.exe")) == bytes);
}

class RealFileCopyIf : public RealLockedFile {
protected:
    RealFileCopyIf() { WriteFile(target, "old"); }

    const std::string target = place.PathOf("out\\target.exe");
};

TEST_F(RealFileCopyIf, HandsOverTheFinishedCopyAndMovesItIntoPlace) {
    std::string seen(2 * bytes.size(), ' ');
    EXPECT_TRUE(FileCopyIf(build, target, [&](LockedFile& copy) {
        seen.resize(copy.Read({reinterpret_cast<std::uint8_t*>(seen.data()), seen.size()}));
        EXPECT_EQ(ReadFile(target), "old");
        return true;
    }));
    EXPECT_TRUE(seen == bytes);
    EXPECT_TRUE(ReadFile(target) == bytes);
    EXPECT_EQ(Tree(place.Out()).size(), 1U);
}

TEST_F(RealFileCopyIf, LeavesTheTargetWhereTheCopyIsRefused) {
    EXPECT_FALSE(FileCopyIf(build, target, [](LockedFile&) { return false; }));
    EXPECT_EQ(ReadFile(target), "old");
    EXPECT_EQ(Tree(place.Out()).size(), 1U);
}

TEST_F(RealFileCopyIf, NobodyCanWriteToTheCopyNorPutAnotherInItsPlaceMeanwhile) {
    const std::string copy = UnfinishedCopyOf(target);
    EXPECT_TRUE(FileCopyIf(build, target, [&](LockedFile&) {
        EXPECT_FALSE(CanBeOpened(copy, GENERIC_WRITE));
        EXPECT_FALSE(DeleteFileA(copy.c_str()));
        EXPECT_FALSE(MoveFileExA(copy.c_str(), (copy + "2").c_str(), 0));
        EXPECT_FALSE(MoveFileExA(other.c_str(), copy.c_str(), MOVEFILE_REPLACE_EXISTING));
        return true;
    }));
    EXPECT_TRUE(ReadFile(target) == bytes);
}

TEST_F(RealFileCopyIf, WaitsForOneWhoHoldsTheTarget) {
    std::optional<HeldFile> hold;
    std::thread letGo;
    EXPECT_TRUE(FileCopyIf(build, target, [&](LockedFile&) {
        hold.emplace(target);
        letGo = std::thread([&hold] {
            Sleep(300);
            hold.reset();
        });
        return true;
    }));
    letGo.join();
    EXPECT_TRUE(ReadFile(target) == bytes);
}

TEST_F(RealFileCopyIf, MakesAFileThatWasNotThere) {
    place.EmptyOut();
    EXPECT_TRUE(FileCopyIf(build, target, [](LockedFile&) { return true; }));
    EXPECT_TRUE(ReadFile(target) == bytes);
}

}  // namespace
}  // namespace swiftpatch::real_system
