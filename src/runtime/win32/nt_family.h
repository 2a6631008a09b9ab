#pragma once

namespace swiftpatch {

/// False on Windows 95, 98 and ME.
bool IsNtFamily();

}  // namespace swiftpatch
