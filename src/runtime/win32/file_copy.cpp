#include <string>
#include <vector>

#include "runtime/files.h"
#include "runtime/win32/errors.h"
#include "runtime/win32/handle.h"
#include "runtime/win32/nt_family.h"

// A copy is made beside the target and moved over it in one step, so that whatever ends the program
// or the machine meanwhile leaves the old file or the new one. Where that cannot be done, because
// the folder takes no new file or the system cannot move over a file (Windows 95), it is copied
// directly.

namespace swiftpatch {
namespace {

/// One name for all copies in a folder: what a killed program has left is in the way of the next
/// copy, which removes it.
constexpr const char* kUnfinished = "~copying.tmp";

constexpr SECURITY_INFORMATION kPermissions = DACL_SECURITY_INFORMATION;
constexpr SECURITY_INFORMATION kOwners = OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION;

std::string BesideFile(const std::string& path) {
    return path.substr(0, path.find_last_of("\\/:") + 1) + kUnfinished;
}

/// The file that comes into being; deleted unless it has been moved away.
class Unfinished {
public:
    explicit Unfinished(std::string path) : path_(std::move(path)) { Remove(); }
    ~Unfinished() { Remove(); }
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;

    const char* Path() const { return path_.c_str(); }

private:
    void Remove() const {
        ::SetFileAttributesA(Path(), FILE_ATTRIBUTE_NORMAL);
        ::DeleteFileA(Path());
    }

    std::string path_;
};

bool Exists(const std::string& path) {
    return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

[[noreturn]] void Fail(DWORD error) { RaiseFileError(error, FileAction::kCopy); }

UniqueFile Open(const char* path, DWORD access, DWORD disposition) {
    constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE;  // Windows 95 knows no more.
    return UniqueFile(
        ::CreateFileA(path, access, kShared, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

/// The error that a direct copy over a file would end with before its first byte.
DWORD ErrorOfWritingTo(const std::string& path) {
    const UniqueFile file = Open(path.c_str(), GENERIC_WRITE, OPEN_EXISTING);
    return file ? ERROR_SUCCESS : ::GetLastError();
}

bool CreateEmpty(const char* path) {
    return static_cast<bool>(Open(path, GENERIC_WRITE, CREATE_NEW));
}

/// Makes a whole copy and returns when it is on the disk: otherwise its later name could be there
/// before its bytes. False when no file can be made at `target`, which is tried first because the
/// copy itself does not tell which of the two files it failed at.
bool CopyToDisk(const char* source, const char* target) {
    if (!CreateEmpty(target)) {
        return false;
    }
    if (!::CopyFileA(source, target, FALSE)) {
        Fail(::GetLastError());
    }
    // A read-only mark comes along, and nothing opens such a file to flush it.
    ::SetFileAttributesA(target, FILE_ATTRIBUTE_NORMAL);
    const UniqueFile copy = Open(target, GENERIC_WRITE, OPEN_EXISTING);
    if (!copy || !::FlushFileBuffers(copy.Get())) {
        Fail(::GetLastError());
    }
    return true;
}

std::vector<BYTE> SecurityOf(const char* path, SECURITY_INFORMATION part) {
    DWORD size = 0;
    ::GetFileSecurityA(path, part, nullptr, 0, &size);
    std::vector<BYTE> descriptor(size);
    if (size == 0 || !::GetFileSecurityA(path, part, descriptor.data(), size, &size)) {
        descriptor.clear();
    }
    return descriptor;
}

/// Gives a new file the owner, the permissions and the attributes of the one that it replaces.
/// False when the permissions would be lost.
bool TakeOver(const std::string& from, const char* path) {
    std::vector<BYTE> owners = SecurityOf(from.c_str(), kOwners);
    if (!owners.empty()) {
        ::SetFileSecurityA(path, kOwners, owners.data());  // Not everybody may give files away.
    }
    std::vector<BYTE> permissions = SecurityOf(from.c_str(), kPermissions);
    if (!permissions.empty() && !::SetFileSecurityA(path, kPermissions, permissions.data())) {
        return false;
    }
    return ::SetFileAttributesA(path, ::GetFileAttributesA(from.c_str())) != FALSE;
}

/// Makes the finished file beside the target and moves it there; false when it has to be copied
/// directly. Raises what the copying itself ends with.
bool CopyAndMove(const std::string& source, const std::string& target) {
    if (!IsNtFamily()) {
        return false;  // It would need room for a copy that comes to nothing.
    }
    const Unfinished copy(BesideFile(target));
    if (!CopyToDisk(source.c_str(), copy.Path())) {
        return false;
    }
    const bool asBefore =
        Exists(target) ? TakeOver(target, copy.Path())
                       : ::SetFileAttributesA(copy.Path(), ::GetFileAttributesA(source.c_str()));
    return asBefore && ::MoveFileExA(copy.Path(), target.c_str(),
                                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

}  // namespace

void FileCopy(const std::string& source, const std::string& target) {
    const DWORD refusal = Exists(target) ? ErrorOfWritingTo(target) : ERROR_SUCCESS;
    if (refusal != ERROR_SUCCESS) {
        Fail(refusal);
    }
    if (!CopyAndMove(source, target) && !::CopyFileA(source.c_str(), target.c_str(), FALSE)) {
        Fail(::GetLastError());
    }
}

}  // namespace swiftpatch
