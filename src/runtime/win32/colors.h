#pragma once

#include "runtime/controls.h"
#include "runtime/win32/win32.h"

namespace swiftpatch {

/// A colour as the system takes it; system colours as they are at the moment.
inline COLORREF ToColorRef(Color color) {
    constexpr std::uint32_t kSystemColor = 0x80000000U;
    const auto value = static_cast<std::uint32_t>(color);
    return (value & kSystemColor) == 0 ? value : ::GetSysColor(static_cast<int>(value & 0xFFU));
}

}  // namespace swiftpatch
