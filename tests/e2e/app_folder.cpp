#include "e2e/app_folder.h"

#include <utility>

#include "e2e/drive_error.h"
#include "e2e/text.h"
#include "e2e/wait.h"
#include "e2e/win32.h"

namespace swiftpatch::e2e {
namespace fs = std::filesystem;
namespace {

// A program that has just ended can still hold its file for a moment.
void RemoveFolder(const fs::path& path) {
    constexpr milliseconds kLongestHold{5000};
    const bool removed = WaitUntil(
        [&] {
            std::error_code error;
            fs::remove_all(path, error);
            return !error && !fs::exists(path, error);
        },
        kLongestHold);
    static_cast<void>(removed);
}

FILETIME FileTimeOf(UtcTime time) {
    // The platform counts tenths of microseconds from the year 1601.
    constexpr std::int64_t kSecondsBefore1970 = 11644473600;
    const auto ticks = static_cast<std::uint64_t>(
        (time.time_since_epoch().count() + kSecondsBefore1970) * 10000000);
    FILETIME result;
    result.dwLowDateTime = static_cast<DWORD>(ticks & 0xFFFFFFFFU);
    result.dwHighDateTime = static_cast<DWORD>(ticks >> 32U);
    return result;
}

}  // namespace

std::vector<std::string> Differences(const Snapshot& before, const Snapshot& after) {
    std::map<std::string, std::string> what;
    for (const auto& [name, contents] : before) {
        const auto found = after.find(name);
        if (found == after.end()) {
            what[name] = "deleted " + name;
        } else if (found->second != contents) {
            what[name] = "changed " + name;
        }
    }
    for (const auto& [name, contents] : after) {
        if (before.count(name) == 0) {
            what[name] = "created " + name;
        }
    }
    std::vector<std::string> lines;
    for (const auto& [name, line] : what) {
        lines.push_back(line);
    }
    return lines;
}

AppFolder::AppFolder(fs::path path, const fs::path& updater) : path_(std::move(path)) {
    RemoveFolder(path_);
    fs::create_directories(path_);
    CopyIn(updater, "swiftpatch.exe");
}

AppFolder::~AppFolder() {
    if (!kept_) {
        RemoveFolder(path_);
    }
}

bool AppFolder::Has(const std::string& name) const { return fs::exists(File(name)); }

void AppFolder::Write(const std::string& name, const std::string& bytes) const {
    WriteWholeFile(File(name), bytes);
}

void AppFolder::CopyIn(const fs::path& source, const std::string& name) const {
    Write(name, ReadWholeFile(source));
}

std::string AppFolder::Read(const std::string& name) const { return ReadWholeFile(File(name)); }

void AppFolder::SetTime(const std::string& name, UtcTime time) const {
    const HANDLE file = CreateFileW(File(name).c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    const FILETIME changed = FileTimeOf(time);
    const bool done = SetFileTime(file, nullptr, nullptr, &changed) != 0;
    CloseHandle(file);
    if (!done) {
        throw DriveError("cannot set the time of " + name);
    }
}

void AppFolder::WriteSettings(const std::string& serverFolder, const std::string& more) const {
    Write("tolvex.dta.txt", "[Updates]\r\nServerDownloadPath=" + serverFolder + "\r\n" + more);
}

Snapshot AppFolder::Take() const {
    Snapshot snapshot;
    for (const fs::directory_entry& entry : fs::directory_iterator(path_)) {
        const std::string name = PathText(entry.path().filename());
        snapshot[name] = entry.is_directory() ? "(a folder)" : ReadWholeFile(entry.path());
    }
    return snapshot;
}

}  // namespace swiftpatch::e2e
