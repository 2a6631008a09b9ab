#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "runtime/datetime.h"
#include "runtime/headless/trace.h"

namespace swiftpatch::headless {

/// A file on the scripted disk.
struct File {
    std::string bytes;
    DateTime changed{};
    bool hidden = false;
    bool readOnly = false;
    bool cutOff = false;  ///< The end of the program is missing.
    bool held = false;    ///< Open in another process that lets nobody write or delete.
    /// Of the world's uptime. Until then another process has the file open and lets nobody read it.
    std::int64_t lockedUntil = 0;
    /// The same, but it lets others read and write the file, and nobody replace it.
    std::int64_t openUntil = 0;
    /// By how many LockedFile, which let others read it.
    int locks = 0;
};

/// The scripted disk. Names are matched without regard to case, as the system does.
class Disk {
public:
    explicit Disk(Trace& trace) : trace_(trace) {}

    std::set<std::string> folders;

    File& Add(const std::string& path, File file);
    void Remove(const std::string& path);
    /// Another process replaces the bytes of a file. False where it cannot, since the file is not
    /// there or locked.
    bool ChangeFromOutside(const std::string& path, const std::string& bytes);
    /// Null when there is no such file.
    File* Find(const std::string& path);
    bool HasFolderOf(const std::string& path) const;
    std::vector<std::string> Names() const;

    /// The `nth` next operation of that name ("Kill", "FileCopy", "Open", "Put", "Close") fails.
    void Fail(const std::string& operation, std::int32_t errorNumber, int nth = 1);
    /// Records an operation and fails it when that was scripted.
    void Operation(const std::string& name, const std::string& details);

private:
    struct Fault {
        std::string operation;
        std::int32_t errorNumber;
        int countdown;
    };

    Trace& trace_;
    std::map<std::string, File> files_;
    std::vector<Fault> faults_;
};

/// The content of a sample build: carries a version block with `version` ("3.0.12.5") as file and
/// product version, and is `size` bytes long. An empty version makes a file without a block.
std::string Build(const std::string& version, std::size_t size);

}  // namespace swiftpatch::headless
