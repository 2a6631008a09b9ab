#include "runtime/win32/canvas.h"

namespace swiftpatch {

Canvas::Canvas(HWND window) : window_(window) {
    const HDC target = ::BeginPaint(window, &paint_);
    ::GetClientRect(window, &client_);
    memory_.Reset(::CreateCompatibleDC(target));
    bitmap_.Reset(::CreateCompatibleBitmap(target, client_.right, client_.bottom));
    before_ = ::SelectObject(memory_.Get(), bitmap_.Get());
    const RECT& part = paint_.rcPaint;
    ::IntersectClipRect(memory_.Get(), part.left, part.top, part.right, part.bottom);
}

Canvas::~Canvas() {
    const RECT& part = paint_.rcPaint;
    // What was drawn may have moved the origin.
    ::SetViewportOrgEx(memory_.Get(), 0, 0, nullptr);
    ::BitBlt(paint_.hdc, part.left, part.top, part.right - part.left, part.bottom - part.top,
             memory_.Get(), part.left, part.top, SRCCOPY);
    ::SelectObject(memory_.Get(), before_);
    ::EndPaint(window_, &paint_);
}

}  // namespace swiftpatch
