#include "publish/placement.h"

#include <system_error>
#include <utility>

#include "publish/files.h"
#include "publish/system.h"

namespace publish {

namespace fs = std::filesystem;

namespace {

/// The same file under a second name, or a copy where the file system knows no such names.
void SecondName(const fs::path& file, const fs::path& second) {
    std::error_code error;
    fs::create_hard_link(file, second, error);
    if (error) {
        CopyFile(file, second);
    }
}

}  // namespace

Placement::Placement(fs::path folder, fs::path before)
    : folder_(std::move(folder)), before_(std::move(before)) {
    fs::create_directory(before_);
}

Placement::~Placement() {
    if (!kept_) {
        PutBack();
    }
}

void Placement::Place(const fs::path& file) {
    const fs::path name = file.filename();
    if (fs::exists(folder_ / name)) {
        SecondName(folder_ / name, before_ / name);
    }
    names_.push_back(name);
    fs::rename(file, folder_ / name);
    FlushFolder(folder_);
}

void Placement::PutBack() const {
    std::error_code error;
    for (auto name = names_.rbegin(); name != names_.rend(); ++name) {
        if (fs::exists(before_ / *name, error)) {
            fs::rename(before_ / *name, folder_ / *name, error);
        } else {
            fs::remove(folder_ / *name, error);
        }
    }
    if (!made_.empty()) {
        fs::remove_all(made_, error);
        fs::remove(made_.parent_path(), error);
    }
}

}  // namespace publish
