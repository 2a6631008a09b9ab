#include "publish/files.h"

#include <fstream>
#include <iterator>
#include <system_error>
#include <vector>

#include "publish/publish_error.h"
#include "publish/system.h"
#include "publish_check/utf8_path.h"

namespace publish {

namespace fs = std::filesystem;
using publish_check::Utf8;

std::string ReadFile(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    if (!stream) {
        throw PublishError("cannot read " + Utf8(file));
    }
    return bytes;
}

void WriteFile(const fs::path& file, const std::string& bytes) {
    std::ofstream stream(file, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) {
        throw PublishError("cannot write " + Utf8(file));
    }
    FlushFile(file);
}

void ReplaceFile(const fs::path& file, const std::string& bytes, const fs::path& scratch) {
    WriteFile(scratch, bytes);
    fs::rename(scratch, file);
    FlushFolder(file.parent_path());
}

void CopyFile(const fs::path& from, const fs::path& to) {
    fs::copy_file(from, to);
    fs::permissions(to, fs::perms::owner_write, fs::perm_options::add);
    fs::last_write_time(to, fs::last_write_time(from));
    FlushFile(to);
}

void RemoveFolder(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> inside;
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        inside.push_back(entry->path());
    }
    // What a folder holds comes after it.
    for (auto path = inside.rbegin(); path != inside.rend(); ++path) {
        fs::permissions(*path, fs::perms::owner_write,
                        fs::perm_options::add | fs::perm_options::nofollow, error);
        fs::remove(*path, error);
    }
    fs::remove(folder, error);
}

}  // namespace publish
