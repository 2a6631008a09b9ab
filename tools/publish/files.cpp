#include "publish/files.h"

#include <fstream>
#include <iterator>

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

void CopyFile(const fs::path& from, const fs::path& to) {
    fs::copy_file(from, to);
    fs::last_write_time(to, fs::last_write_time(from));
    FlushFile(to);
}

}  // namespace publish
