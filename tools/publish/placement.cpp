#include "publish/placement.h"

#include <system_error>
#include <utility>

#include "publish/files.h"
#include "publish/system.h"

namespace publish {

namespace fs = std::filesystem;

namespace {

/// Also where a link leads nowhere.
bool HasName(const fs::path& file) {
    std::error_code error;
    return fs::exists(fs::symlink_status(file, error));
}

/// The same file under a second name, or a copy where the file system knows no such names.
void SecondName(const fs::path& file, const fs::path& second) {
    std::error_code error;
    fs::create_hard_link(file, second, error);
    if (error && fs::is_symlink(file)) {
        fs::copy_symlink(file, second);
    } else if (error) {
        CopyFile(file, second);
    }
}

}  // namespace

Placement::Placement(fs::path folder, fs::path before)
    : folder_(std::move(folder)), before_(std::move(before)) {
    fs::create_directory(before_);
}

void Placement::Place(const fs::path& file) {
    const fs::path name = file.filename();
    const bool replaces = HasName(folder_ / name);
    if (replaces) {
        SecondName(folder_ / name, before_ / name);
    }
    placed_.push_back({name, replaces});
    fs::rename(file, folder_ / name);
    FlushFolder(folder_);
}

bool Placement::PutBack() const {
    std::error_code error;
    for (auto each = placed_.rbegin(); each != placed_.rend(); ++each) {
        if (each->replaces) {
            fs::rename(before_ / each->name, folder_ / each->name, error);
        } else {
            fs::remove(folder_ / each->name, error);
        }
        if (error) {
            return false;
        }
    }
    if (kept_.made) {
        RemoveFolder(kept_.folder);
    }
    if (kept_.madeParent) {
        fs::remove(kept_.folder.parent_path(), error);
    }
    return true;
}

}  // namespace publish
