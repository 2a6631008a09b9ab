#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "runtime/code_page.h"
#include "runtime/files.h"
#include "runtime/internal/unfinished_copy.h"
#include "runtime/runtime_error.h"
#include "runtime/win32/consent.h"
#include "runtime/win32/errors.h"
#include "runtime/win32/file_security.h"
#include "runtime/win32/flush.h"
#include "runtime/win32/handle.h"
#include "runtime/win32/locked_file.h"
#include "runtime/win32/nt_family.h"
#include "runtime/win32/patience.h"
#include "runtime/win32/system_library.h"

// A copy is made beside the target, flushed to the disk and moved over it in one step, so that
// whatever ends the program or the machine meanwhile leaves the old file or the new one. A virus
// scanner opens every new file for a moment and others may have the target open, so each step is
// tried again for two seconds before the copy fails; the target is untouched then. Copying over the
// target itself would get past such a reader, and leave half a program when it is cut off.
//
// That is done only where there is no other way: Windows 95, 98 and ME cannot move over a file,
// and in some folders nobody may create one. What could go wrong half-way is looked at before: the
// room on the drive.

namespace swiftpatch {
namespace {

[[noreturn]] void Fail(DWORD error) { RaiseFileError(error, FileAction::kCopy); }

void FailUnless(DWORD error) {
    if (error != ERROR_SUCCESS) {
        Fail(error);
    }
}

DWORD AttributesOf(const std::string& path) { return ::GetFileAttributesA(path.c_str()); }

bool Exists(const std::string& path) { return AttributesOf(path) != INVALID_FILE_ATTRIBUTES; }

UniqueFile OpenToWrite(const std::string& path, DWORD disposition) {
    constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE;  // Windows 95 knows no more.
    return UniqueFile(::CreateFileA(path.c_str(), GENERIC_WRITE, kShared, nullptr, disposition,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
}

DWORD ErrorOfOpening(const std::string& path, DWORD disposition) {
    const UniqueFile file = OpenToWrite(path, disposition);
    return file ? ERROR_SUCCESS : ::GetLastError();
}

/// A folder or a link under the name is none of ours, nor is a file that somebody else has put
/// under protection. (One of ours is read-only while a read-only file is being copied.)
bool IsOurs(const std::string& unfinished) {
    const DWORD attributes = AttributesOf(unfinished);
    return (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) == 0 &&
           ((attributes & FILE_ATTRIBUTE_READONLY) == 0 || !BelongsToAnother(unfinished));
}

DWORD Remove(const std::string& unfinished) {
    if (!Exists(unfinished)) {
        return ERROR_SUCCESS;
    }
    if (!IsOurs(unfinished)) {
        return ERROR_FILE_EXISTS;
    }
    ::SetFileAttributesA(unfinished.c_str(), FILE_ATTRIBUTE_NORMAL);
    return ErrorOf(::DeleteFileA(unfinished.c_str()));
}

/// The file that comes into being; deleted unless it has been moved away.
class Unfinished {
public:
    explicit Unfinished(std::string path) : path_(std::move(path)) {}
    ~Unfinished() { Remove(path_); }
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;

    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

/// Stands for a folder in which nobody may create a file.
constexpr DWORD kTakesNoFile = ERROR_PRIVILEGE_NOT_HELD;

DWORD ErrorOfCreating(const std::string& unfinished) {
    const DWORD refused = Remove(unfinished);
    if (refused != ERROR_SUCCESS) {
        return refused;
    }
    const DWORD error = ErrorOfOpening(unfinished, CREATE_NEW);
    // A file that is about to go refuses access as well, but can still be seen.
    const bool gone = !Exists(unfinished) && ::GetLastError() == ERROR_FILE_NOT_FOUND;
    return error == ERROR_ACCESS_DENIED && gone ? kTakesNoFile : error;
}

/// Makes an empty file, which the copy then overwrites: the copy itself would not tell which of its
/// two files it failed at. False where nobody may create one.
bool Create(const std::string& unfinished) {
    const DWORD error = WaitOutHold([&unfinished] { return ErrorOfCreating(unfinished); });
    if (error == ERROR_FILE_EXISTS) {
        throw RuntimeError(error_number::kPathFileAccess);
    }
    if (error == kTakesNoFile) {
        return false;
    }
    FailUnless(error);
    return true;
}

/// Returns when the whole copy is on the disk: otherwise its later name could be there before its
/// bytes.
void CopyToDisk(const std::string& source, const std::string& unfinished) {
    FailUnless(WaitOutHold(
        [&] { return ErrorOf(::CopyFileA(source.c_str(), unfinished.c_str(), FALSE)); }));
    // A read-only mark comes along, and nothing opens such a file to flush it.
    ::SetFileAttributesA(unfinished.c_str(), FILE_ATTRIBUTE_NORMAL);
    FailUnless(WaitOutHold([&unfinished] {
        const UniqueFile copy = OpenToWrite(unfinished, OPEN_EXISTING);
        return copy ? Flush(copy.Get()) : ::GetLastError();
    }));
}

/// Makes the copy what its later name stands for: the file that it replaces, but for the bytes.
void TakeOver(const std::string& source, const std::string& target, const std::string& unfinished) {
    const bool replaces = Exists(target);
    if (replaces) {
        FailUnless(TakeOverSecurity(target, unfinished));
    }
    FailUnless(ErrorOf(
        ::SetFileAttributesA(unfinished.c_str(), AttributesOf(replaces ? target : source))));
}

DWORD Move(const std::string& from, const std::string& to) {
    if (!IsNtFamily()) {
        return ErrorOf(::MoveFileA(from.c_str(), to.c_str()));
    }
    return ErrorOf(::MoveFileExA(from.c_str(), to.c_str(),
                                 MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
}

/// FILE_RENAME_INFO, which the headers declare for Windows Vista and later only.
struct RenameInfo {
    BOOL replaceIfExists;
    HANDLE rootDirectory;
    DWORD nameLength;  // In bytes.
    std::array<WCHAR, MAX_PATH> name;
};
constexpr int kFileRenameInfo = 3;  // Of FILE_INFO_BY_HANDLE_CLASS.

/// Not there before Windows Vista.
using SetInformation = LateFunction<BOOL(WINAPI*)(HANDLE, int, void*, DWORD)>;
const SetInformation& SetFileInformationByHandle() {
    static const SystemLibrary library("kernel32.dll");
    static const SetInformation function(library, "SetFileInformationByHandle");
    return function;
}

bool MovesByHandle() { return static_cast<bool>(SetFileInformationByHandle()); }

/// Opens a finished copy so that nobody else can write to it. Where the system moves a file by its
/// handle, nobody can rename or delete it either, and so put another under its name.
UniqueFile Hold(const std::string& unfinished) {
    const DWORD access = MovesByHandle() ? GENERIC_READ | GENERIC_WRITE | DELETE : GENERIC_READ;
    const DWORD moved = MovesByHandle() || !IsNtFamily() ? 0 : FILE_SHARE_DELETE;
    UniqueFile held;
    WaitOutHold([&] {
        held.Reset(::CreateFileA(unfinished.c_str(), access, FILE_SHARE_READ | moved, nullptr,
                                 OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        return held ? ERROR_SUCCESS : ::GetLastError();
    });
    return held;
}

DWORD MoveHeld(HANDLE held, const std::string& target) {
    RenameInfo info{TRUE, nullptr, 0, {}};
    const int length = ::MultiByteToWideChar(CP_ACP, 0, target.c_str(), -1, info.name.data(),
                                             static_cast<int>(info.name.size()));
    if (length == 0) {
        return ::GetLastError();
    }
    info.nameLength = static_cast<DWORD>(length - 1) * sizeof(WCHAR);
    const DWORD error =
        ErrorOf(SetFileInformationByHandle()(held, kFileRenameInfo, &info, sizeof(info)));
    return error == ERROR_SUCCESS ? Flush(held) : error;
}

bool PlaceIfRight(const std::string& source, const std::string& target,
                  const std::string& unfinished,
                  const std::function<bool(LockedFile& copy)>& isRight) {
    UniqueFile file = Hold(unfinished);
    if (!file) {
        return false;
    }
    const HANDLE handle = file.Get();
    std::optional<LockedFile> held(
        std::make_unique<LockedFile::Open>(LockedFile::Open{std::move(file)}));
    if (!isRight(*held)) {
        return false;
    }
    TakeOver(source, target, unfinished);
    if (MovesByHandle()) {
        FailUnless(WaitOutHold([&] { return MoveHeld(handle, target); }));
        return true;
    }
    if (!IsNtFamily()) {
        held.reset();  // Windows 95, 98 and ME move no file that is open.
    }
    FailUnless(WaitOutHold([&] { return Move(unfinished, target); }));
    return true;
}

/// The bytes that are free on a file's drive; where the drive does not tell, as many as can be.
std::uint64_t RoomFor(const std::string& path) {
    constexpr std::size_t kRoot = 3;  // "C:\": Windows 95 wants no more of a path.
    const std::string folder = path.substr(0, MaskTrailBytes(path).find_last_of("\\/:") + 1);
    DWORD sectors = 0;
    DWORD bytes = 0;
    DWORD free = 0;
    DWORD all = 0;
    for (const std::string& place : {folder, folder.substr(0, kRoot)}) {
        if (::GetDiskFreeSpaceA(place.c_str(), &sectors, &bytes, &free, &all)) {
            return std::uint64_t{sectors} * bytes * free;
        }
    }
    return std::numeric_limits<std::uint64_t>::max();
}

/// Copies over the target itself.
void CopyDirectly(const std::string& source, const std::string& target) {
    if (!Exists(target)) {
        Fail(ERROR_ACCESS_DENIED);
    }
    const std::int64_t more = std::int64_t{FileLen(source)} - FileLen(target);
    if (more > 0 && RoomFor(target) < static_cast<std::uint64_t>(more)) {
        Fail(ERROR_DISK_FULL);
    }
    FailUnless(ErrorOf(::CopyFileA(source.c_str(), target.c_str(), FALSE)));
}

}  // namespace

void FileCopy(const std::string& source, const std::string& target) {
    FileCopyIf(source, target, {});
}

bool FileCopyIf(const std::string& source, const std::string& target,
                const std::function<bool(LockedFile& copy)>& isRight) {
    const bool replaces = Exists(target);
    if (replaces) {
        FailUnless(WaitOutHold([&target] { return ErrorOfOpening(target, OPEN_EXISTING); }));
    }
    const Unfinished copy(UnfinishedCopyOf(target));
    if ((replaces && !IsNtFamily()) || !Create(copy.Path())) {
        CopyDirectly(source, target);
        return true;
    }
    CopyToDisk(source, copy.Path());
    if (isRight) {
        return PlaceIfRight(source, target, copy.Path(), isRight);
    }
    TakeOver(source, target, copy.Path());
    FailUnless(WaitOutHold([&] { return Move(copy.Path(), target); }));
    return true;
}

void RemoveUnfinishedCopy(const std::string& folder) {
    if (MayDelete(folder)) {
        Remove(UnfinishedCopyOf(folder + "\\"));
    }
}

}  // namespace swiftpatch
