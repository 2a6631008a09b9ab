#include "runtime/files.h"

#include <array>
#include <map>
#include <memory>

#include "runtime/internal/line_reader.h"
#include "runtime/internal/program_head.h"
#include "runtime/runtime_error.h"
#include "runtime/win32/consent.h"
#include "runtime/win32/errors.h"
#include "runtime/win32/flush.h"
#include "runtime/win32/handle.h"
#include "runtime/win32/locked_file.h"
#include "runtime/win32/patience.h"
#include "runtime/win32/system_time.h"

namespace swiftpatch {
namespace {

/// Small writes are gathered up to this many bytes, because each call of the system costs more
/// than copying a thousand of them.
constexpr std::size_t kGather = 64 * 1024;
constexpr int kMostFiles = 255;

struct OpenFile {
    UniqueFile file;
    std::string gathered;
    std::unique_ptr<LineReader> lines;
};

std::map<int, OpenFile>& OpenFiles() {
    static std::map<int, OpenFile> files;
    return files;
}

OpenFile& FileOf(int number) {
    const auto found = OpenFiles().find(number);
    if (found == OpenFiles().end()) {
        throw RuntimeError(error_number::kBadFileNameOrNumber);
    }
    return found->second;
}

constexpr DWORD kNotNormal =
    FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

/// The system writes such characters where the code page has none for a name.
constexpr const char* kWildcards = "*?";

UniqueFile OpenToRead(const std::string& path) {
    return UniqueFile(::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

/// The directory's entry of a file. Wildcards would find another file than the one named.
WIN32_FIND_DATAA EntryOf(const std::string& path) {
    WIN32_FIND_DATAA entry{};
    if (path.find_first_of(kWildcards) == std::string::npos) {
        const UniqueFind search(::FindFirstFileA(path.c_str(), &entry));
        if (search && (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            return entry;
        }
    }
    throw RuntimeError(error_number::kFileNotFound);
}

/// Afterwards nothing is gathered, whether it was written or not; the memory is used again.
void WriteOut(OpenFile& open) {
    const auto count = static_cast<DWORD>(open.gathered.size());
    DWORD written = 0;
    const bool failed =
        count != 0 && !::WriteFile(open.file.Get(), open.gathered.data(), count, &written, nullptr);
    open.gathered.clear();
    if (failed) {
        RaiseFileError(::GetLastError(), FileAction::kOpen);
    }
    if (written != count) {
        throw RuntimeError(error_number::kDiskFull);
    }
}

LineReader& LinesOf(int number) {
    const OpenFile& open = FileOf(number);
    if (!open.lines) {
        throw RuntimeError(error_number::kBadFileMode);
    }
    return *open.lines;
}

std::string ReadBlock(HANDLE file) {
    std::string block(kGather, '\0');
    DWORD count = 0;
    if (!::ReadFile(file, block.data(), static_cast<DWORD>(block.size()), &count, nullptr)) {
        RaiseFileError(::GetLastError(), FileAction::kOpen);
    }
    block.resize(count);
    return block;
}

/// Where an open of the file is refused for a moment, it is waited for.
UniqueFile OpenLocked(const std::string& path) {
    UniqueFile file;
    const DWORD error = WaitOutHold([&] {
        file.Reset(::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                 OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        return file ? ERROR_SUCCESS : ::GetLastError();
    });
    if (error != ERROR_SUCCESS) {
        RaiseFileError(error, FileAction::kOpen);
    }
    return file;
}

}  // namespace

LockedFile::LockedFile(const std::string& path)
    : open_(std::make_unique<Open>(Open{OpenLocked(path)})) {}

LockedFile::LockedFile(std::unique_ptr<Open> open) : open_(std::move(open)) {}

LockedFile::~LockedFile() = default;

std::size_t LockedFile::Read(std::span<std::uint8_t> buffer) {
    DWORD count = 0;
    if (!::ReadFile(open_->file.Get(), buffer.data(), static_cast<DWORD>(buffer.size()), &count,
                    nullptr)) {
        RaiseFileError(::GetLastError(), FileAction::kOpen);
    }
    return count;
}

bool FileExists(const std::string& path) {
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    return IsThere(path, attributes != INVALID_FILE_ATTRIBUTES && (attributes & kNotNormal) == 0);
}

std::vector<std::string> FilesIn(const std::string& folder) {
    std::vector<std::string> names;
    WIN32_FIND_DATAA entry{};
    const UniqueFind search(::FindFirstFileA((folder + "\\*").c_str(), &entry));
    for (bool found = static_cast<bool>(search); found;
         found = ::FindNextFileA(search.Get(), &entry) != FALSE) {
        const std::string name = entry.cFileName;
        if ((entry.dwFileAttributes & kNotNormal) == 0 &&
            name.find_first_of(kWildcards) == std::string::npos) {
            names.push_back(name);
        }
    }
    return names;
}

bool ProgramIsWhole(const std::string& path) {
    const UniqueFile file = OpenToRead(path);
    std::array<std::uint8_t, kProgramHead> head{};
    DWORD count = 0;
    if (!file || !::ReadFile(file.Get(), head.data(), kProgramHead, &count, nullptr)) {
        return false;
    }
    DWORD high = 0;
    const DWORD low = ::GetFileSize(file.Get(), &high);
    const std::optional<std::uint64_t> length = LengthOfProgram({head.data(), count});
    return length && *length <= (std::uint64_t{high} << 32 | low);
}

std::int32_t FileLen(const std::string& path) {
    const WIN32_FIND_DATAA entry = EntryOf(path);
    if (entry.nFileSizeHigh != 0 || entry.nFileSizeLow > 0x7FFFFFFFU) {
        throw RuntimeError(error_number::kOverflow);
    }
    return static_cast<std::int32_t>(entry.nFileSizeLow);
}

DateTime FileDateTime(const std::string& path) {
    const WIN32_FIND_DATAA entry = EntryOf(path);
    FILETIME local;
    SYSTEMTIME time;
    if (!::FileTimeToLocalFileTime(&entry.ftLastWriteTime, &local) ||
        !::FileTimeToSystemTime(&local, &time)) {
        throw RuntimeError(error_number::kInvalidProcedureCall);
    }
    return ToDateTime(time);
}

void Kill(const std::string& path) {
    if (MayDelete(path) && !::DeleteFileA(path.c_str())) {
        RaiseFileError(::GetLastError(), FileAction::kDelete);
    }
}

void MkDir(const std::string& path) {
    if (!::CreateDirectoryA(path.c_str(), nullptr)) {
        RaiseFileError(::GetLastError(), FileAction::kOpen);
    }
}

int FreeFile() {
    for (int number = 1; number <= kMostFiles; ++number) {
        if (OpenFiles().count(number) == 0) {
            return number;
        }
    }
    throw RuntimeError(error_number::kTooManyFiles);
}

void OpenForBinary(const std::string& path, int number) {
    if (OpenFiles().count(number) != 0) {
        throw RuntimeError(error_number::kFileAlreadyOpen);
    }
    UniqueFile file(::CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                  OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) {
        RaiseFileError(::GetLastError(), FileAction::kOpen);
    }
    OpenFiles()[number].file = std::move(file);
}

void PutBytes(int number, std::string_view bytes) {
    OpenFile& open = FileOf(number);
    open.gathered += bytes;
    if (open.gathered.size() >= kGather) {
        WriteOut(open);
    }
}

void FlushFile(int number) {
    OpenFile& open = FileOf(number);
    WriteOut(open);
    const DWORD error = Flush(open.file.Get());
    if (error != ERROR_SUCCESS) {
        RaiseFileError(error, FileAction::kOpen);
    }
}

void OpenForInput(const std::string& path, int number) {
    if (OpenFiles().count(number) != 0) {
        throw RuntimeError(error_number::kFileAlreadyOpen);
    }
    UniqueFile file = OpenToRead(path);
    if (!file) {
        RaiseFileError(::GetLastError(), FileAction::kOpen);
    }
    const HANDLE handle = file.Get();
    OpenFile& open = OpenFiles()[number];
    open.file = std::move(file);
    open.lines = std::make_unique<LineReader>([handle] { return ReadBlock(handle); });
}

std::string LineInput(int number) { return LinesOf(number).Next(); }

bool EndOfFile(int number) { return LinesOf(number).AtEnd(); }

void CloseFile(int number) {
    const auto found = OpenFiles().find(number);
    if (found != OpenFiles().end()) {
        OpenFile closing = std::move(found->second);
        OpenFiles().erase(found);
        WriteOut(closing);
    }
}

void CloseAllFiles() noexcept {
    while (!OpenFiles().empty()) {
        try {
            CloseFile(OpenFiles().begin()->first);
        } catch (const RuntimeError&) {
            // The run is over: nobody is left to be told.
        }
    }
}

}  // namespace swiftpatch
