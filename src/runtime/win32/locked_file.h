#pragma once

#include "runtime/files.h"
#include "runtime/win32/handle.h"

namespace swiftpatch {

struct LockedFile::Open {
    UniqueFile file;
};

}  // namespace swiftpatch
