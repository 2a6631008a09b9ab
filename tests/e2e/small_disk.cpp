#include "e2e/small_disk.h"

#include <string>

#include "e2e/shell_below.h"
#include "e2e/text.h"
#include "e2e/wait.h"
#include "e2e/win32.h"

namespace swiftpatch::e2e {
namespace fs = std::filesystem;
namespace {

// A lazy unmount, since a program that was ended can hold a file for a moment more.
constexpr char kScript[] =
    "mount -t tmpfs -o size=8m,nr_inodes=100,mode=777 small \\\"$0\\\" || exec touch "
    "\\\"$1.refused\\\"; "
    "touch \\\"$0/mounted\\\"; n=0; "
    "while [ -e \\\"$1\\\" ] && [ $n -lt 1500 ]; do sleep 0.2; n=$((n+1)); done; "
    "umount -l \\\"$0\\\"";

// Those of the disk below, and some for the folders that are there already.
constexpr int kMostNames = 100;

}  // namespace

SmallDisk::SmallDisk(const fs::path& folder)
    : folder_(folder), marker_(folder.parent_path() / (folder.filename().native() + L".mount")) {
    constexpr milliseconds kLongestMount{20000};
    fs::create_directories(folder_);
    fs::path refused = marker_;
    refused += L".refused";
    fs::remove(refused);
    WriteWholeFile(marker_, "");
    RunBelow(kScript, {PathBelow(folder_), PathBelow(marker_)});
    WaitUntil([&] { return fs::exists(folder_ / "mounted") || fs::exists(refused); },
              kLongestMount);
    mounted_ = fs::exists(folder_ / "mounted");
}

SmallDisk::~SmallDisk() {
    constexpr milliseconds kLongestEnd{10000};
    std::error_code ignored;
    fs::remove(marker_, ignored);
    WaitUntil([this] { return !mounted_ || !fs::exists(folder_ / "mounted"); }, kLongestEnd);
}

// The free space that Wine reports is that of another file system; so it is filled until it is
// full.
void SmallDisk::Leave(std::int64_t free) const {
    const HANDLE file =
        CreateFileW(Filler().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    const std::string block(4096, 'f');
    std::int64_t size = 0;
    DWORD written = 0;
    while (WriteFile(file, block.data(), static_cast<DWORD>(block.size()), &written, nullptr) !=
               0 &&
           written != 0) {
        size += written;
    }
    LARGE_INTEGER end;
    end.QuadPart = size > free ? size - free : 0;
    SetFilePointerEx(file, end, nullptr, FILE_BEGIN);
    SetEndOfFile(file);
    CloseHandle(file);
}

void SmallDisk::MakeRoom() const { fs::remove(Filler()); }

void SmallDisk::TakeNames() const {
    for (int number = 0; number < kMostNames; ++number) {
        const HANDLE file =
            CreateFileW(Name(number).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE) {
            return;
        }
        CloseHandle(file);
    }
}

void SmallDisk::GiveNamesBack() const {
    for (int number = 0; number < kMostNames; ++number) {
        fs::remove(Name(number));
    }
}

}  // namespace swiftpatch::e2e
