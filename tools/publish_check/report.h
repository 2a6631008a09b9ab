#pragma once

#include <string>

#include "publish_check/assessment.h"

namespace publish_check {

/// The result in plain sentences.
std::string PlainReport(const Assessment& assessment);

/// The same for machines: one object, ended by a line break.
std::string JsonReport(const Assessment& assessment);

}  // namespace publish_check
