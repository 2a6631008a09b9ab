#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <variant>

namespace swiftpatch::headless {

/// A file of a scripted cabinet.
struct CabinetFile {
    std::string name;
    std::string bytes;
    std::uint16_t dosDate = 0x5C6A;  ///< 10 March 2026
    std::uint16_t dosTime = 0x6207;  ///< 12:16:14
    std::uint32_t extractError = 0;  ///< The system cannot write it.
};

/// A notification that is no file.
struct CabinetNotification {
    std::uint32_t number = 0;
};

/// A cabinet on the scripted disk. Files that the callback has extracted appear on that disk.
/// Exists for as long as the object lives; a walk through any other path fails with the system's
/// "file not found".
class Cabinet {
public:
    explicit Cabinet(std::string path);
    ~Cabinet();
    Cabinet(const Cabinet&) = delete;
    Cabinet& operator=(const Cabinet&) = delete;

    void Add(CabinetFile file) { steps_.emplace_back(std::move(file)); }
    void Add(CabinetNotification notification) { steps_.emplace_back(notification); }

    /// The walk fails with this last error once all files are through.
    std::uint32_t failure = 0;

    // Used by the runtime.
    using Step = std::variant<CabinetFile, CabinetNotification>;
    const std::string& Path() const { return path_; }
    const std::deque<Step>& Steps() const { return steps_; }

private:
    std::string path_;
    std::deque<Step> steps_;
};

}  // namespace swiftpatch::headless
