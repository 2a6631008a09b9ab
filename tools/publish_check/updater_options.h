#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "publish_check/assessment.h"

namespace publish_check {

/// What a command line says of the updaters in the field.
struct UpdaterOptions {
    std::vector<Installed> installed;
    std::optional<std::string> keys;  ///< As a data file names them.
};

/// Reads --installed or --keys, with all that belongs to it, where one of them stands at `at`,
/// which is moved to the last argument that was read. False for any other argument. Throws
/// UsageError.
bool ReadUpdaterOption(const std::vector<std::string>& arguments, std::size_t& at,
                       UpdaterOptions& options);

/// The keys that the updaters have: those of the options or, where nobody named any, those that are
/// compiled in.
std::optional<std::string> KeysOfUpdaters(const UpdaterOptions& options);

}  // namespace publish_check
