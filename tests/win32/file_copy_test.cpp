#include <gtest/gtest.h>
#include <windows.h>

#include "runtime/files.h"
#include "runtime/runtime_error.h"
#include "win32/files.h"

namespace swiftpatch::real_system {
namespace {

constexpr SYSTEMTIME kLongAgo{2020, 2, 3, 5, 8, 12, 31, 0};
constexpr std::size_t kLarge = 24 * 1024 * 1024;
constexpr const char* kUnfinished = "out\\~copying.tmp";

void SetTime(const std::string& path, const SYSTEMTIME& time) {
    FILETIME changed;
    SystemTimeToFileTime(&time, &changed);
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    SetFileTime(file, nullptr, nullptr, &changed);
    CloseHandle(file);
}

FILETIME TimeOf(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data);
    return data.ftLastWriteTime;
}

class RealFileCopy : public testing::Test {
protected:
    ~RealFileCopy() override { MarkReadOnly(target, false); }

    /// The number of the error that the copy ends with; 0 without one.
    std::int32_t Copy() const {
        try {
            FileCopy(source, target);
            return 0;
        } catch (const RuntimeError& error) {
            return error.Number();
        }
    }
    /// What is in the target's folder: nothing but the target, with these bytes.
    void ExpectOnlyTarget(const std::string& content) const {
        const std::map<std::string, std::string> expected{{"target.exe", content}};
        EXPECT_TRUE(Tree(place.Out()) == expected) << "another file, or other bytes";
    }
    void ExpectTheSourcesTime() const {
        const FILETIME copied = TimeOf(target);
        const FILETIME changed = TimeOf(source);
        EXPECT_EQ(CompareFileTime(&copied, &changed), 0);
    }

    Workplace place;
    const std::string bytes = std::string(300'000, 'n') + "end";
    const std::string source = place.Put("source.exe", bytes);
    const std::string target = place.PathOf("out\\target.exe");
};

TEST_F(RealFileCopy, MakesTheFileWithTheSourcesTime) {
    SetTime(source, kLongAgo);
    EXPECT_EQ(Copy(), 0);
    ExpectOnlyTarget(bytes);
    ExpectTheSourcesTime();
}

TEST_F(RealFileCopy, ReplacesTheFileThatIsThere) {
    WriteFile(target, "an old build that is a little longer than nothing");
    EXPECT_EQ(Copy(), 0);
    ExpectOnlyTarget(bytes);
}

TEST_F(RealFileCopy, OfAnEmptyFileIsEmpty) {
    WriteFile(source, "");
    WriteFile(target, "old");
    EXPECT_EQ(Copy(), 0);
    ExpectOnlyTarget("");
}

TEST_F(RealFileCopy, OfALargeFileIsWholeAndCanBeRepeated) {
    std::string large;
    for (int number = 0; large.size() < kLarge; ++number) {
        large += std::to_string(number);
    }
    WriteFile(source, large);
    SetTime(source, kLongAgo);
    for (int run = 0; run < 2; ++run) {
        EXPECT_EQ(Copy(), 0);
        ExpectOnlyTarget(large);
        ExpectTheSourcesTime();
    }
}

TEST_F(RealFileCopy, KeepsTheTargetsAttributes) {
    WriteFile(target, "old");
    SetFileAttributesA(target.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    const DWORD before = GetFileAttributesA(target.c_str());
    MarkReadOnly(source, true);
    EXPECT_EQ(Copy(), 0);
    EXPECT_EQ(GetFileAttributesA(target.c_str()), before);
    MarkReadOnly(source, false);
    ExpectOnlyTarget(bytes);
}

TEST_F(RealFileCopy, GivesANewFileTheSourcesAttributes) {
    MarkReadOnly(source, true);
    const DWORD attributes = GetFileAttributesA(source.c_str());
    EXPECT_EQ(Copy(), 0);
    EXPECT_EQ(GetFileAttributesA(target.c_str()) & FILE_ATTRIBUTE_READONLY,
              attributes & FILE_ATTRIBUTE_READONLY);
    MarkReadOnly(source, false);
}

TEST_F(RealFileCopy, OfAMissingFileIsFileNotFoundAndKeepsTheTarget) {
    WriteFile(target, "old");
    DeleteFileA(source.c_str());
    EXPECT_EQ(Copy(), error_number::kFileNotFound);
    ExpectOnlyTarget("old");
}

TEST_F(RealFileCopy, IntoAMissingFolderIsPathNotFound) {
    RemoveDirectoryA(place.Out().c_str());
    EXPECT_EQ(Copy(), error_number::kPathNotFound);
    CreateDirectoryA(place.Out().c_str(), nullptr);
}

TEST_F(RealFileCopy, OverAHeldFileIsPermissionDenied) {
    WriteFile(target, "old");
    {
        const HeldFile held(target);
        EXPECT_EQ(Copy(), error_number::kPermissionDenied);
    }
    ExpectOnlyTarget("old");
}

TEST_F(RealFileCopy, OfAHeldFileIsPermissionDenied) {
    WriteFile(target, "old");
    {
        const HeldFile held(source);
        EXPECT_EQ(Copy(), error_number::kPermissionDenied);
    }
    ExpectOnlyTarget("old");
}

TEST_F(RealFileCopy, OverAReadOnlyFileIsPermissionDenied) {
    WriteFile(target, "old");
    MarkReadOnly(target, true);
    if (IsWritable(target)) {
        EXPECT_EQ(Copy(), 0);
        return;
    }
    EXPECT_EQ(Copy(), error_number::kPermissionDenied);
    ExpectOnlyTarget("old");
}

TEST_F(RealFileCopy, RemovesWhatAKilledOneHasLeft) {
    WriteFile(place.PathOf(kUnfinished), "half a bui");
    MarkReadOnly(place.PathOf(kUnfinished), true);
    WriteFile(target, "old");
    EXPECT_EQ(Copy(), 0);
    ExpectOnlyTarget(bytes);
}

TEST_F(RealFileCopy, IsDirectWhereTheFolderTakesNoNewFile) {
    // A folder of that name stands for a folder that takes no new file.
    CreateDirectoryA(place.PathOf(kUnfinished).c_str(), nullptr);
    WriteFile(target, "old");
    EXPECT_EQ(Copy(), 0);
    ExpectOnlyTarget(bytes);
    EXPECT_TRUE(RemoveDirectoryA(place.PathOf(kUnfinished).c_str()));
}

TEST_F(RealFileCopy, OverItselfKeepsTheFile) {
    WriteFile(target, bytes);
    try {
        FileCopy(target, target);
    } catch (const RuntimeError&) {
        // The system may refuse; what counts is the file.
    }
    ExpectOnlyTarget(bytes);
}

}  // namespace
}  // namespace swiftpatch::real_system
