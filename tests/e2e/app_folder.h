#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace swiftpatch::e2e {

/// A time in UTC.
using UtcTime = std::chrono::sys_seconds;

/// The files of a folder: their names and contents.
using Snapshot = std::map<std::string, std::string>;

/// What differs between two snapshots, in the order of the names: "created NAME", "changed NAME",
/// "deleted NAME".
std::vector<std::string> Differences(const Snapshot& before, const Snapshot& after);

/// A fresh application folder with the updater in it; deleted, with all that is in it, at the end
/// unless it is to be kept.
class AppFolder {
public:
    /// Makes the folder `path`, which may already be there from an earlier run.
    AppFolder(std::filesystem::path path, const std::filesystem::path& updater);
    ~AppFolder();
    AppFolder(const AppFolder&) = delete;
    AppFolder& operator=(const AppFolder&) = delete;

    void Keep() { kept_ = true; }

    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path File(const std::string& name) const { return path_ / name; }
    std::filesystem::path Updater() const { return File("swiftpatch.exe"); }
    bool Has(const std::string& name) const;

    void Write(const std::string& name, const std::string& bytes) const;
    void CopyIn(const std::filesystem::path& source, const std::string& name) const;
    std::string Read(const std::string& name) const;
    /// Sets the time of a file's last change.
    void SetTime(const std::string& name, UtcTime time) const;

    /// Writes the data file with the server folder in it and further lines, "KEY=VALUE\r\n" each.
    void WriteSettings(const std::string& serverFolder, const std::string& more = {}) const;

    /// Names and contents of all that is in the folder; a folder in it stands for itself.
    Snapshot Take() const;

private:
    std::filesystem::path path_;
    bool kept_ = false;
};

}  // namespace swiftpatch::e2e
