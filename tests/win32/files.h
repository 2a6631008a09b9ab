#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace swiftpatch::real_system {

/// Where the tests find the cabinets and where they may write. Absolute paths.
struct Folders {
    std::filesystem::path cabinets;
    std::filesystem::path scratch;
};
/// The folders of this run; set once, before the first test.
Folders& TestFolders();

std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, const std::string& bytes);

/// Every file under a folder: its path from there, with "\", and its bytes.
std::map<std::string, std::string> Tree(const std::filesystem::path& folder);

/// Marks a file as read-only or takes the mark away. Whether the mark keeps anybody from writing
/// depends on the system and the user.
void MarkReadOnly(const std::string& path, bool readOnly);
bool IsWritable(const std::string& path);

/// Keeps a file open so that nobody else can read or write it.
class HeldFile {
public:
    explicit HeldFile(const std::string& path);
    ~HeldFile();
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

private:
    void* handle_;
};

/// Keeps a file open to read it, as another process that lets everybody read and write it.
class ReadFileByOther {
public:
    explicit ReadFileByOther(const std::string& path);
    ~ReadFileByOther();
    ReadFileByOther(const ReadFileByOther&) = delete;
    ReadFileByOther& operator=(const ReadFileByOther&) = delete;

    bool IsOpen() const;

private:
    void* handle_;
};

/// A folder of its own for a test, with the folder "out" in it. All of it is removed at the end.
class Workplace {
public:
    Workplace();
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    std::string PathOf(const std::string& name) const { return (root_ / name).string(); }
    std::string Out() const { return PathOf("out"); }
    std::string Put(const std::string& name, const std::string& bytes) const;
    /// Empties the folder "out".
    void EmptyOut() const;
    /// What the test has put here or what something wrote beside "out".
    std::map<std::string, std::string> Beside() const;

private:
    std::filesystem::path root_;
};

}  // namespace swiftpatch::real_system
