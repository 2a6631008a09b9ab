#include "publish/workshop.h"

#include <random>
#include <string>
#include <system_error>

#include "publish/files.h"
#include "publish/publish_error.h"
#include "publish/server_folder.h"
#include "publish_check/utf8_path.h"

namespace publish {

namespace fs = std::filesystem;
using publish_check::Utf8;

namespace {

constexpr const char* kName = "publish-";

}  // namespace

Workshop::Workshop(const Order& order)
    : parent_(order.dryRun ? fs::temp_directory_path() : order.folder / kWorkshop),
      folder_(parent_ / (kName + std::to_string(std::random_device()()))) {}

Workshop::~Workshop() {
    RemoveFolder(folder_);
    if (!IsTrial()) {
        std::error_code notEmpty;
        fs::remove(parent_, notEmpty);
    }
}

void Workshop::Open() const {
    if (!IsTrial() && fs::exists(fs::symlink_status(parent_))) {
        RemoveLeftovers();
    }
    fs::create_directories(New());
}

bool Workshop::IsTrial() const { return parent_.filename() != kWorkshop; }

void Workshop::RemoveLeftovers() const {
    if (!fs::is_directory(fs::symlink_status(parent_))) {
        throw PublishError(Utf8(parent_) + " is no folder, and publish needs one of this name");
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(parent_)) {
        if (Utf8(entry.path().filename()).starts_with(kName)) {
            RemoveFolder(entry.path());
        }
    }
}

}  // namespace publish
