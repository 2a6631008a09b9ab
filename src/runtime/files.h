#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/datetime.h"

namespace swiftpatch {

// Whole files. Errors are run-time errors: 53 File not found, 57 Device I/O error, 61 Disk full,
// 70 Permission denied, 71 Disk not ready, 75 Path/File access error, 76 Path not found.

/// The directory lookup for a normal file: true when `path` names a file that is neither a
/// folder nor hidden nor a system file. Never raises an error.
bool FileExists(const std::string& path);

/// The names of the normal files (as FileExists takes them) that lie directly in `folder`, in no
/// order. A name that the code page cannot spell is left out, since nothing could open it. Empty
/// where the folder cannot be read. Never raises an error.
std::vector<std::string> FilesIn(const std::string& folder);

/// True for a Windows program of which nothing is missing that its own header tells of: its
/// sections and its certificates. What was appended to them is not looked at. False too where the
/// file cannot be read. Never raises an error.
bool ProgramIsWhole(const std::string& path);

/// Length in bytes. Raises 53, and 6 for a length that 32 signed bits cannot hold.
std::int32_t FileLen(const std::string& path);

/// Local time of the last change. Raises 53.
DateTime FileDateTime(const std::string& path);

/// Deletes a file. Raises 53, and 75 when another process holds it or it is read-only.
void Kill(const std::string& path);

/// Copies a file over `target`, which need not exist. Raises 53, 61, 70 when the target is held by
/// another process or read-only, and 75 when something that is not ours has the name of an
/// unfinished copy. The target carries the source's time and the streams beside its bytes, as the
/// platform does, and keeps its own owner, permissions and attributes. Waits up to two seconds for
/// a process that keeps the target from being replaced. Whenever it ends, even by force, the target
/// is what it was or the whole copy; only where nobody may create a file in the folder, or on a
/// system that cannot move over a file, it can be found in part. Does not pump.
void FileCopy(const std::string& source, const std::string& target);

/// A file that nobody can change, delete or replace for as long as this lives. Others can read it.
class LockedFile {
public:
    /// Raises 53, 70 when another process has the file open and may change it, 75 or 76. Waits up
    /// to two seconds for such a process. Does not pump.
    explicit LockedFile(const std::string& path);
    ~LockedFile();
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;

    /// Reads the next bytes into `buffer` and returns how many; 0 at the end of the file. Raises 57
    /// and the like when they cannot be read.
    std::size_t Read(std::span<std::uint8_t> buffer);

    /// The platform's, of a file that is locked already.
    struct Open;
    explicit LockedFile(std::unique_ptr<Open> open);

private:
    std::unique_ptr<Open> open_;
};

/// As FileCopy, but the finished copy is only put in the target's place when `isRight`, which is
/// handed the copy, says so; otherwise the result is false. From there to its place nobody can
/// write to the copy, nor, where the system can move a file without its name, put another in its
/// place. A copy over the target itself is not asked about.
bool FileCopyIf(const std::string& source, const std::string& target,
                const std::function<bool(LockedFile& copy)>& isRight);

/// Removes from a folder what a copy into it has left that was ended by force. Never raises an
/// error: what cannot be removed stays.
void RemoveUnfinishedCopy(const std::string& folder);

/// Creates a folder in one that is there. Raises 75 when it exists or may not be created, 76 when
/// the folder around it does not exist.
void MkDir(const std::string& path);

// Files by number, as one procedure opens, writes and closes them. A number that is not open
// raises 52 Bad file name or number.

/// The lowest free file number from 1 on. Raises 67 Too many files.
int FreeFile();

/// Opens `path` for binary writing under `number`; creates the file when it is missing and keeps
/// what an existing one holds, the position being its first byte. Raises 55 when the number is in
/// use, 70 when another process holds the file, 75 or 76.
void OpenForBinary(const std::string& path, int number);

/// Writes `bytes` at the current position. Bytes may be gathered in memory and written later, in
/// FlushFile or CloseFile at the latest, which then raises the error.
void PutBytes(int number, std::string_view bytes);

/// Returns when all that was written is on the disk. Raises 57 or 61 when it cannot be.
void FlushFile(int number);

/// Opens `path` for reading lines under `number`. Raises 53, 55, 70, 75 or 76.
void OpenForInput(const std::string& path, int number);

/// The next line, without the CR LF that ends it; a CR or LF alone is a part of the line, and the
/// last line may end without one. Raises 62 Input past end of file.
std::string LineInput(int number);

/// True when LineInput has no more to read.
bool EndOfFile(int number);

/// Writes what was gathered and closes. Does nothing for a number that is not open.
void CloseFile(int number);

/// Closes all files; called when the run ends. Never raises an error.
void CloseAllFiles() noexcept;

}  // namespace swiftpatch
