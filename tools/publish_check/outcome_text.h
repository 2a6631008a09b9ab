#pragma once

#include <optional>
#include <string>

#include "publish_check/field_machine.h"

namespace publish_check {

/// What a run does, and why, as sentences. `installed` is how the installed program is named.
std::string Sentence(const FieldRun& run, const std::string& installed,
                     const std::optional<FileVersions>& offered);

/// Why an updater finds that `offered` is no newer than `installed`, though it is.
std::string ReasonHidden(const Version& installed, const Version& offered);

}  // namespace publish_check
