#include "runtime/win32/picture.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace swiftpatch {
namespace {

std::span<const char> Resource(int id) {
    const HRSRC found = ::FindResourceA(nullptr, MAKEINTRESOURCEA(id), RT_RCDATA);
    const HGLOBAL loaded = found != nullptr ? ::LoadResource(nullptr, found) : nullptr;
    if (loaded == nullptr) {
        return {};
    }
    return {static_cast<const char*>(::LockResource(loaded)), ::SizeofResource(nullptr, found)};
}

/// A stream over a copy of the bytes, which it owns.
UniqueInterface<IStream> StreamOver(std::span<const char> bytes) {
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    if (memory == nullptr) {
        return {};
    }
    std::memcpy(::GlobalLock(memory), bytes.data(), bytes.size());
    ::GlobalUnlock(memory);
    IStream* stream = nullptr;
    if (FAILED(::CreateStreamOnHGlobal(memory, TRUE, &stream))) {
        ::GlobalFree(memory);
        return {};
    }
    return UniqueInterface<IStream>(stream);
}

}  // namespace

UniqueInterface<IPicture> LoadPicture(int resourceId) {
    const std::span<const char> bytes = Resource(resourceId);
    const UniqueInterface<IStream> stream = StreamOver(bytes);
    void* picture = nullptr;
    if (bytes.empty() || !stream ||
        FAILED(::OleLoadPicture(stream.Get(), static_cast<LONG>(bytes.size()), FALSE, IID_IPicture,
                                &picture))) {
        return {};
    }
    return UniqueInterface<IPicture>(static_cast<IPicture*>(picture));
}

void DrawPicture(IPicture* picture, HDC device, const RECT& where) {
    OLE_XSIZE_HIMETRIC width = 0;
    OLE_YSIZE_HIMETRIC height = 0;
    if (picture == nullptr || FAILED(picture->get_Width(&width)) ||
        FAILED(picture->get_Height(&height)) || width <= 0 || height <= 0) {
        return;
    }
    const int right = where.right;
    const int bottom = where.bottom;
    const int shownWidth = std::min(right, ::MulDiv(bottom, width, height));
    const int shownHeight = std::min(bottom, ::MulDiv(right, height, width));
    ::SetStretchBltMode(device, HALFTONE);
    ::SetBrushOrgEx(device, 0, 0, nullptr);
    // The picture's own coordinates count from the bottom up.
    picture->Render(device, (right - shownWidth) / 2, (bottom - shownHeight) / 2, shownWidth,
                    shownHeight, 0, height, width, -height, nullptr);
}

}  // namespace swiftpatch
