#pragma once

#include <filesystem>

#include "publish/order.h"

namespace publish {

/// The folder in which a release comes about, and which goes with this. Its name is not used again,
/// since a program that an earlier call has started may still write to its own. Only a trial leaves
/// the server's folder alone.
class Workshop {
public:
    explicit Workshop(const Order& order);
    ~Workshop();
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    /// Makes it, and clears away what was left by calls that were killed, but nothing else. Throws
    /// PublishError or std::filesystem::filesystem_error.
    void Open() const;

    std::filesystem::path New() const { return folder_ / "new"; }

    // Names on the file system of the server's folder that nobody uses.
    std::filesystem::path Before() const { return folder_ / "before"; }
    std::filesystem::path Kept() const { return folder_ / "kept"; }
    std::filesystem::path Scratch() const { return folder_ / "scratch"; }

private:
    bool IsTrial() const;
    void RemoveLeftovers() const;

    std::filesystem::path parent_;
    std::filesystem::path folder_;
};

}  // namespace publish
