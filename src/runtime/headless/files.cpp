#include "runtime/files.h"

#include <algorithm>
#include <limits>
#include <map>
#include <memory>
#include <utility>

#include "runtime/clock.h"
#include "runtime/headless/world.h"
#include "runtime/internal/line_reader.h"
#include "runtime/internal/unfinished_copy.h"
#include "runtime/runtime_error.h"
#include "runtime/strings.h"

namespace swiftpatch {
namespace {

using headless::Disk;
using headless::File;
using headless::TheWorld;

struct OpenFile {
    std::string path;
    std::size_t position = 0;
    std::shared_ptr<LineReader> lines;
};

std::map<int, OpenFile>& OpenFiles() {
    static std::map<int, OpenFile> files;
    return files;
}

OpenFile& OpenFileOf(int number) {
    const auto found = OpenFiles().find(number);
    if (found == OpenFiles().end()) {
        throw RuntimeError(error_number::kBadFileNameOrNumber);
    }
    return found->second;
}

File& Existing(const std::string& path) {
    File* file = TheWorld().disk.Find(path);
    if (file == nullptr) {
        throw RuntimeError(error_number::kFileNotFound);
    }
    return *file;
}

/// When nobody else has a file open any more, on the world's uptime.
std::int64_t EndOfHold(const File& file) {
    constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();
    const bool forGood = file.held || file.locks > 0;
    return forGood ? kNever : std::max(file.lockedUntil, file.openUntil);
}

bool IsHeld(const File& file) {
    return file.held || file.locks > 0 || file.lockedUntil > TheWorld().uptime;
}

/// What is in the place of an unfinished copy and is none of ours.
bool IsForeign(const std::string& unfinished) {
    Disk& disk = TheWorld().disk;
    const File* file = disk.Find(unfinished);
    return disk.folders.contains(unfinished) || (file != nullptr && file->readOnly);
}

/// The copy lies beside the target for as long as it is looked at.
bool IsRightCopy(const File& copy, const std::string& unfinished,
                 const std::function<bool(LockedFile& copy)>& isRight) {
    Disk& disk = TheWorld().disk;
    disk.Add(unfinished, copy);
    bool right = false;
    try {
        LockedFile file(unfinished);
        right = isRight(file);
    } catch (const RuntimeError&) {
        right = false;
    }
    disk.Remove(unfinished);
    return right;
}

bool IsOpenHere(const std::string& path) {
    for (const auto& [number, open] : OpenFiles()) {
        if (open.path == path) {
            return true;
        }
    }
    return false;
}

}  // namespace

bool FileExists(const std::string& path) {
    const File* file = TheWorld().disk.Find(path);
    return file != nullptr && !file->hidden;
}

std::vector<std::string> FilesIn(const std::string& folder) {
    Disk& disk = TheWorld().disk;
    TheWorld().trace.Add("FilesIn " + folder);
    std::vector<std::string> names;
    if (!disk.folders.contains(folder)) {
        return names;
    }
    for (const std::string& path : disk.Names()) {
        const std::size_t name = path.rfind('\\') + 1;
        if (EqualWithoutCase(path.substr(0, name), folder + "\\") && FileExists(path)) {
            names.push_back(path.substr(name));
        }
    }
    return names;
}

bool ProgramIsWhole(const std::string& path) {
    const File* file = TheWorld().disk.Find(path);
    return file != nullptr && !file->cutOff && file->lockedUntil <= TheWorld().uptime;
}

std::int32_t FileLen(const std::string& path) {
    return static_cast<std::int32_t>(Existing(path).bytes.size());
}

DateTime FileDateTime(const std::string& path) { return Existing(path).changed; }

void Kill(const std::string& path) {
    TheWorld().disk.Operation("Kill", path);
    const File& file = Existing(path);
    if (IsHeld(file) || file.readOnly || IsOpenHere(path)) {
        throw RuntimeError(error_number::kPathFileAccess);
    }
    TheWorld().disk.Remove(path);
}

struct LockedFile::Open {
    std::string path;
    std::size_t position = 0;
};

LockedFile::LockedFile(const std::string& path) : open_(std::make_unique<Open>(Open{path})) {
    TheWorld().disk.Operation("Lock", path);
    File& file = Existing(path);
    if (file.held || !TheWorld().WaitOutHold(std::max(file.lockedUntil, file.openUntil))) {
        throw RuntimeError(error_number::kPermissionDenied);
    }
    ++file.locks;
}

LockedFile::LockedFile(std::unique_ptr<Open> open) : open_(std::move(open)) {}

LockedFile::~LockedFile() {
    if (File* const file = TheWorld().disk.Find(open_->path)) {
        --file->locks;
    }
}

std::size_t LockedFile::Read(std::span<std::uint8_t> buffer) {
    TheWorld().disk.Operation("Read", open_->path);
    const std::string& bytes = Existing(open_->path).bytes;
    const std::size_t count = std::min(buffer.size(), bytes.size() - open_->position);
    std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(open_->position), count,
                buffer.begin());
    open_->position += count;
    return count;
}

void FileCopy(const std::string& source, const std::string& target) {
    FileCopyIf(source, target, {});
}

bool FileCopyIf(const std::string& source, const std::string& target,
                const std::function<bool(LockedFile& copy)>& isRight) {
    TheWorld().disk.Operation("FileCopy", source + " -> " + target);
    Disk& disk = TheWorld().disk;
    File copy{Existing(source).bytes, Existing(source).changed};
    const File* old = disk.Find(target);
    if (old != nullptr && (old->readOnly || !TheWorld().WaitOutHold(EndOfHold(*old)))) {
        throw RuntimeError(error_number::kPermissionDenied);
    }
    if (!disk.HasFolderOf(target)) {
        throw RuntimeError(error_number::kPathNotFound);
    }
    if (IsForeign(UnfinishedCopyOf(target))) {
        throw RuntimeError(error_number::kPathFileAccess);
    }
    if (TheWorld().withEachCopy) {
        TheWorld().withEachCopy(copy);
    }
    if (isRight && !IsRightCopy(copy, UnfinishedCopyOf(target), isRight)) {
        return false;
    }
    disk.Add(target, copy);
    return true;
}

void RemoveUnfinishedCopy(const std::string& folder) {
    Disk& disk = TheWorld().disk;
    const std::string unfinished = UnfinishedCopyOf(folder + "\\");
    if (disk.Find(unfinished) != nullptr && !IsForeign(unfinished)) {
        TheWorld().trace.Add("RemoveUnfinishedCopy " + folder);
        disk.Remove(unfinished);
    }
}

void MkDir(const std::string& path) {
    Disk& disk = TheWorld().disk;
    disk.Operation("MkDir", path);
    if (disk.folders.contains(path) || disk.Find(path) != nullptr) {
        throw RuntimeError(error_number::kPathFileAccess);
    }
    if (!disk.HasFolderOf(path)) {
        throw RuntimeError(error_number::kPathNotFound);
    }
    disk.folders.insert(path);
}

int FreeFile() {
    int number = 1;
    while (OpenFiles().contains(number)) {
        ++number;
    }
    return number;
}

void OpenForBinary(const std::string& path, int number) {
    Disk& disk = TheWorld().disk;
    disk.Operation("Open", path + " #" + std::to_string(number));
    if (OpenFiles().contains(number)) {
        throw RuntimeError(error_number::kFileAlreadyOpen);
    }
    if (!disk.HasFolderOf(path)) {
        throw RuntimeError(error_number::kPathNotFound);
    }
    const File* file = disk.Find(path);
    if (file != nullptr && IsHeld(*file)) {
        throw RuntimeError(error_number::kPermissionDenied);
    }
    if (file != nullptr && file->readOnly) {
        throw RuntimeError(error_number::kPathFileAccess);
    }
    if (file == nullptr) {
        disk.Add(path, {"", Now()});
    }
    OpenFiles()[number] = {path, 0, nullptr};
}

void PutBytes(int number, std::string_view bytes) {
    OpenFile& open = OpenFileOf(number);
    TheWorld().disk.Operation("Put",
                              "#" + std::to_string(number) + " " + std::to_string(bytes.size()));
    Existing(open.path).bytes.replace(open.position, bytes.size(), bytes);
    open.position += bytes.size();
}

void FlushFile(int number) {
    OpenFileOf(number);
    TheWorld().disk.Operation("Flush", "#" + std::to_string(number));
}

void OpenForInput(const std::string& path, int number) {
    TheWorld().disk.Operation("OpenForInput", path + " #" + std::to_string(number));
    if (OpenFiles().contains(number)) {
        throw RuntimeError(error_number::kFileAlreadyOpen);
    }
    const File& file = Existing(path);
    if (file.lockedUntil > TheWorld().uptime) {
        throw RuntimeError(error_number::kPermissionDenied);
    }
    const auto text = std::make_shared<std::string>(file.bytes);
    OpenFiles()[number] = {
        path, 0, std::make_shared<LineReader>([text] { return std::exchange(*text, {}); })};
}

std::string LineInput(int number) {
    OpenFile& open = OpenFileOf(number);
    TheWorld().disk.Operation("LineInput", "#" + std::to_string(number));
    return open.lines->Next();
}

bool EndOfFile(int number) { return OpenFileOf(number).lines->AtEnd(); }

void CloseFile(int number) {
    if (OpenFiles().erase(number) > 0) {
        TheWorld().disk.Operation("Close", "#" + std::to_string(number));
    }
}

void CloseAllFiles() noexcept { OpenFiles().clear(); }

}  // namespace swiftpatch
