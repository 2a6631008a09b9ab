#pragma once

#include "runtime/component.h"
#include "runtime/form.h"

namespace swiftpatch {

/// Nothing is shown here; a form only has a number that other programs would know its window by.
struct Peer {
    WindowHandle handle = 0;
};

}  // namespace swiftpatch
