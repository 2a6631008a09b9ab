#pragma once

#include <optional>
#include <string>
#include <vector>

#include "publish_check/field_machine.h"
#include "publish_check/finding.h"

namespace publish_check {

/// What an updater beside one installed program does.
struct VersionAssessment {
    std::string installed;  ///< "3.00.11.00", or a word for none.
    bool served = false;    ///< It gets the published build, or has it, or has a newer one.
    FieldRun run;           ///< The run on a machine where nothing was fetched before.
    std::vector<Finding> findings;
};

struct Assessment {
    std::string address;
    std::optional<FileVersions> versions;
    std::vector<Finding> findings;  ///< About the server folder.
    std::vector<VersionAssessment> updaters;

    /// Every updater that was asked about would be served, and nothing is wrong with the folder.
    bool Served() const;
};

/// The installed program that is asked about.
struct Installed {
    std::optional<Version> version;  ///< Nothing: there is no main program.
};

/// Looks at the folder as an updater does at the time `now` (UTC), for each of the installed
/// programs; without any, for one that is older than every build. With `keys`, as a data file names
/// them, the updaters want a build that one of them has signed.
Assessment Assess(const ServerState& state, const std::vector<Installed>& installed,
                  swiftpatch::DateTime now, const std::optional<std::string>& keys = {});

}  // namespace publish_check
