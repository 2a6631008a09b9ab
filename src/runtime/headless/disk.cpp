#include "runtime/headless/disk.h"

#include <algorithm>
#include <cctype>

#include "runtime/code_page.h"
#include "runtime/runtime_error.h"

namespace swiftpatch::headless {
namespace {

std::string Key(const std::string& path) {
    std::string key = path;
    std::transform(key.begin(), key.end(), key.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return key;
}

}  // namespace

File& Disk::Add(const std::string& path, File file) { return files_[Key(path)] = std::move(file); }

void Disk::Remove(const std::string& path) { files_.erase(Key(path)); }

bool Disk::ChangeFromOutside(const std::string& path, const std::string& bytes) {
    File* const file = Find(path);
    const bool open = file != nullptr && file->locks == 0;
    if (open) {
        file->bytes = bytes;
    }
    return open;
}

File* Disk::Find(const std::string& path) {
    const auto found = files_.find(Key(path));
    return found == files_.end() ? nullptr : &found->second;
}

bool Disk::HasFolderOf(const std::string& path) const {
    return folders.contains(path.substr(0, MaskTrailBytes(path).rfind('\\')));
}

std::vector<std::string> Disk::Names() const {
    std::vector<std::string> names;
    std::transform(files_.begin(), files_.end(), std::back_inserter(names),
                   [](const auto& entry) { return entry.first; });
    return names;
}

void Disk::Fail(const std::string& operation, std::int32_t errorNumber, int nth) {
    faults_.push_back({operation, errorNumber, nth});
}

void Disk::Operation(const std::string& name, const std::string& details) {
    trace_.Add(name + " " + details);
    std::int32_t errorNumber = 0;
    for (Fault& fault : faults_) {
        if (fault.operation == name && --fault.countdown == 0) {
            errorNumber = fault.errorNumber;
        }
    }
    if (errorNumber != 0) {
        throw RuntimeError(errorNumber);
    }
}

std::string Build(const std::string& version, std::size_t size) {
    std::string bytes = version.empty() ? "MZ;" : "MZ version=" + version + ";";
    bytes.resize(std::max(bytes.size(), size), 'x');
    return bytes;
}

}  // namespace swiftpatch::headless
