#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <optional>
#include <set>
#include <thread>

#include "runtime/files.h"
#include "runtime/internal/unfinished_copy.h"
#include "runtime/runtime_error.h"
#include "runtime/win32/file_security.h"
#include "win32/files.h"

namespace swiftpatch::real_system {
namespace {

constexpr SYSTEMTIME kLongAgo{2020, 2, 3, 5, 8, 12, 31, 0};
constexpr std::size_t kLarge = 24 * 1024 * 1024;
const std::string kUnfinished = std::string("out\\") + kUnfinishedCopy;

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

/// Makes somebody else the owner of a file, with the help of the system below Wine.
void GiveAway(const std::string& path) {
    std::string below = path.substr(2);
    std::replace(below.begin(), below.end(), '\\', '/');
    std::string line = "chown 12345 \"" + below + "\"";
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION made{};
    if (CreateProcessA("Z:\\bin\\chown", line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &startup, &made)) {
        WaitForSingleObject(made.hProcess, 10'000);
        CloseHandle(made.hThread);
        CloseHandle(made.hProcess);
    }
    for (int looks = 0; looks < 100 && !BelongsToAnother(path); ++looks) {
        Sleep(50);
    }
}

/// Windows does not, nor does Wine 10. Wine 8 does.
bool MovesOverReadOnlyFiles(const Workplace& place) {
    const std::string target = place.Put("read-only", "old");
    const std::string replacement = place.Put("replacement", "new");
    MarkReadOnly(target, true);
    const BOOL moved = MoveFileExA(replacement.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING);
    MarkReadOnly(target, false);
    return moved != FALSE;
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

TEST_F(RealFileCopy, OverAFileThatIsHeldForAMomentIsMade) {
    WriteFile(target, "old");
    std::optional<HeldFile> held(target);
    std::thread leaving([&held] {
        Sleep(700);
        held.reset();
    });
    EXPECT_EQ(Copy(), 0);
    leaving.join();
    ExpectOnlyTarget(bytes);
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
    if (IsWritable(target) && MovesOverReadOnlyFiles(place)) {
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

TEST_F(RealFileCopy, IsRefusedWhereAFolderHasTheNameOfAnUnfinishedCopy) {
    CreateDirectoryA(place.PathOf(kUnfinished).c_str(), nullptr);
    WriteFile(target, "old");
    EXPECT_EQ(Copy(), error_number::kPathFileAccess);
    ExpectOnlyTarget("old");
    EXPECT_TRUE(RemoveDirectoryA(place.PathOf(kUnfinished).c_str()));
}

TEST_F(RealFileCopy, IsRefusedWhereSomebodyElsesFileHasTheNameOfAnUnfinishedCopy) {
    WriteFile(place.PathOf(kUnfinished), "somebody else's");
    GiveAway(place.PathOf(kUnfinished));
    MarkReadOnly(place.PathOf(kUnfinished), true);
    if (!BelongsToAnother(place.PathOf(kUnfinished))) {
        GTEST_SKIP() << "files cannot be given away here";
    }
    WriteFile(target, "old");
    EXPECT_EQ(Copy(), error_number::kPathFileAccess);
    RemoveUnfinishedCopy(place.Out());
    EXPECT_EQ(ReadFile(place.PathOf(kUnfinished)), "somebody else's");
    EXPECT_EQ(ReadFile(target), "old");
    MarkReadOnly(place.PathOf(kUnfinished), false);
}

TEST_F(RealFileCopy, ThatIsUnfinishedIsRemoved) {
    RemoveUnfinishedCopy(place.Out());
    WriteFile(target, "old");
    WriteFile(place.PathOf(kUnfinished), "half a bui");
    MarkReadOnly(place.PathOf(kUnfinished), true);
    RemoveUnfinishedCopy(place.Out());
    ExpectOnlyTarget("old");
}

/// Looks at the target's size all the time, on a thread of its own.
class Watcher {
public:
    explicit Watcher(std::string path)
        : path_(std::move(path)), thread_([this] {
              while (!over_) {
                  sizes_.insert(SizeOf(path_));
                  ++looks_;
              }
          }) {}
    /// All sizes that were seen; -1 stands for no file.
    std::set<std::int64_t> Stop() {
        over_ = true;
        thread_.join();
        EXPECT_GT(looks_, 10);
        return sizes_;
    }

private:
    static std::int64_t SizeOf(const std::string& path) {
        WIN32_FILE_ATTRIBUTE_DATA data{};
        const BOOL there = GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data);
        return there ? static_cast<std::int64_t>(data.nFileSizeLow) : -1;
    }

    std::string path_;
    std::atomic<bool> over_ = false;
    int looks_ = 0;
    std::set<std::int64_t> sizes_;
    std::thread thread_;
};

class WatchedFileCopy : public RealFileCopy {
protected:
    WatchedFileCopy() {
        WriteFile(source, std::string(kLarge, 'n'));
        WriteFile(target, kOld);
    }

    std::int32_t CopyWatched() {
        Watcher watcher(target);
        const std::int32_t error = Copy();
        seen_ = watcher.Stop();
        return error;
    }
    void ExpectOldOrNew() const {
        for (const std::int64_t size : seen_) {
            EXPECT_TRUE(size == kOldSize || size == static_cast<std::int64_t>(kLarge)) << size;
        }
    }

    const std::string kOld = "an old build";
    const std::int64_t kOldSize = static_cast<std::int64_t>(kOld.size());
    std::set<std::int64_t> seen_;
};

TEST_F(WatchedFileCopy, IsOldOrNewAtEveryMoment) {
    EXPECT_EQ(CopyWatched(), 0);
    ExpectOldOrNew();
    ExpectOnlyTarget(std::string(kLarge, 'n'));
}

// As a reader that lets others write, but not move or delete, what it reads.
TEST_F(WatchedFileCopy, OverAFileThatIsBeingReadWaitsForTheReader) {
    std::optional<ReadFileByOther> reader(target);
    std::thread leaving([&reader] {
        Sleep(1000);
        reader.reset();
    });
    EXPECT_EQ(CopyWatched(), 0);
    leaving.join();
    ExpectOldOrNew();
    ExpectOnlyTarget(std::string(kLarge, 'n'));
}

TEST_F(WatchedFileCopy, OverAFileThatStaysOpenIsPermissionDeniedAndKeepsIt) {
    {
        const ReadFileByOther reader(target);
        EXPECT_EQ(CopyWatched(), error_number::kPermissionDenied);
    }
    EXPECT_EQ(seen_, std::set<std::int64_t>{kOldSize});
    ExpectOnlyTarget(kOld);
}

// As a virus scanner does with every new file.
TEST_F(WatchedFileCopy, WhoseUnfinishedFileIsHeldForAMomentIsMade) {
    std::thread scanner([this] {
        const DWORD start = GetTickCount();
        while (GetTickCount() - start < 5000) {
            const ReadFileByOther held(place.PathOf(kUnfinished));
            if (held.IsOpen()) {
                Sleep(700);
                return;
            }
        }
    });
    EXPECT_EQ(CopyWatched(), 0);
    scanner.join();
    ExpectOldOrNew();
    ExpectOnlyTarget(std::string(kLarge, 'n'));
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
