#include "win32/files.h"

#include <windows.h>

#include <fstream>
#include <iterator>

namespace swiftpatch::real_system {
namespace fs = std::filesystem;

Folders& TestFolders() {
    static Folders folders;
    return folders;
}

std::string ReadFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteFile(const fs::path& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file << bytes;
}

std::map<std::string, std::string> Tree(const fs::path& folder) {
    std::map<std::string, std::string> tree;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            fs::path name = entry.path().lexically_relative(folder);
            tree[name.make_preferred().string()] = ReadFile(entry.path());
        }
    }
    return tree;
}

void MarkReadOnly(const std::string& path, bool readOnly) {
    SetFileAttributesA(path.c_str(), readOnly ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL);
}

bool IsWritable(const std::string& path) {
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    return file != INVALID_HANDLE_VALUE && CloseHandle(file);
}

HeldFile::HeldFile(const std::string& path)
    : handle_(CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                          FILE_ATTRIBUTE_NORMAL, nullptr)) {}

HeldFile::~HeldFile() { CloseHandle(handle_); }

ReadFileByOther::ReadFileByOther(const std::string& path)
    : handle_(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)) {}

ReadFileByOther::~ReadFileByOther() {
    if (IsOpen()) {
        CloseHandle(handle_);
    }
}

bool ReadFileByOther::IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }

Workplace::Workplace() {
    static int number = 0;
    root_ = TestFolders().scratch / ("test" + std::to_string(++number));
    fs::remove_all(root_);
    fs::create_directories(root_ / "out");
}

Workplace::~Workplace() {
    std::error_code ignored;
    fs::remove_all(root_, ignored);
}

std::string Workplace::Put(const std::string& name, const std::string& bytes) const {
    WriteFile(root_ / name, bytes);
    return PathOf(name);
}

void Workplace::EmptyOut() const {
    fs::remove_all(root_ / "out");
    fs::create_directories(root_ / "out");
}

std::map<std::string, std::string> Workplace::Beside() const {
    std::map<std::string, std::string> tree = Tree(root_);
    std::erase_if(tree, [](const auto& entry) { return entry.first.starts_with("out\\"); });
    return tree;
}

}  // namespace swiftpatch::real_system
