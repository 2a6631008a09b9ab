#include "e2e/read_only_folder.h"

#include "e2e/shell_below.h"
#include "e2e/text.h"
#include "e2e/wait.h"
#include "e2e/win32.h"

namespace swiftpatch::e2e {
namespace fs = std::filesystem;
namespace {

// The folder is free again when the marker has gone, or after two minutes at the latest: a test
// that is stopped must not leave behind what nobody can delete. For an ordinary user the first
// command is enough, for root only the second one is.
constexpr char kScript[] =
    "chmod a-w \\\"$0\\\"; chattr +i \\\"$0\\\"; n=0; "
    "while [ -e \\\"$1\\\" ] && [ $n -lt 600 ]; do sleep 0.2; n=$((n+1)); done; "
    "chattr -i \\\"$0\\\"; chmod u+w \\\"$0\\\"";

bool Writable(const fs::path& folder) {
    const HANDLE file = CreateFileW((folder / "trial").c_str(), GENERIC_WRITE, 0, nullptr,
                                    CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    CloseHandle(file);
    return true;
}

}  // namespace

ReadOnlyFolder::ReadOnlyFolder(const fs::path& folder)
    : folder_(folder), marker_(folder.parent_path() / (folder.filename().native() + L".locked")) {
    constexpr milliseconds kLongestStart{20000};
    WriteWholeFile(marker_, "");
    RunBelow(kScript, {PathBelow(folder_), PathBelow(marker_)});
    effective_ = WaitUntil([this] { return !Writable(folder_); }, kLongestStart);
}

ReadOnlyFolder::~ReadOnlyFolder() {
    constexpr milliseconds kLongestEnd{5000};
    std::error_code ignored;
    fs::remove(marker_, ignored);
    WaitUntil([this] { return Writable(folder_); }, kLongestEnd);
}

}  // namespace swiftpatch::e2e
