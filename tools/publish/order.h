#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "publish_check/updater_options.h"

namespace publish {

/// What the command line asks for.
struct Order : publish_check::UpdaterOptions {
    std::filesystem::path folder;
    std::filesystem::path build;  ///< Empty when an earlier one is to come back.
    bool rollBack = false;        ///< A kept build is to come back:
    /// the one with this version, or else with the next lower one.
    std::optional<publish_check::Version> backTo;
    bool keysAreNamed = false;            ///< Not only found beside the secret ones.
    std::vector<std::string> secretKeys;  ///< Files that minisign signs with.
    std::string upload;   ///< A command that gets each file; empty: the folder is the server's.
    std::string address;  ///< The folder's on the server, to be looked at in the end; or empty.
    bool dryRun = false;  ///< Everything but a change of the folder.
    bool json = false;
    bool help = false;
};

}  // namespace publish
