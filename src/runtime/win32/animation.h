#pragma once

#include "runtime/controls.h"

namespace swiftpatch {

/// Plays what is open, or stops it, as the AutoPlay property says.
void PlayOrStop(const Animation& animation);

}  // namespace swiftpatch
