#pragma once

#include "runtime/win32/handle.h"

namespace swiftpatch {

/// Paints a window's invalid part: what is drawn goes to memory first, and to the window in one go
/// when the canvas is destroyed.
class Canvas {
public:
    explicit Canvas(HWND window);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC Device() const { return memory_.Get(); }
    const RECT& Client() const { return client_; }

private:
    HWND window_;
    PAINTSTRUCT paint_{};
    RECT client_{};
    UniqueDevice memory_;
    UniqueBitmap bitmap_;
    HGDIOBJ before_ = nullptr;
};

}  // namespace swiftpatch
