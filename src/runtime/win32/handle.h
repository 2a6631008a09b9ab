#pragma once

#include <utility>

#include "runtime/win32/win32.h"

namespace swiftpatch {

/// Owns a handle of the system; `Traits` says which, what "none" is, and how it is let go.
template <class Traits>
class UniqueHandle {
public:
    using Handle = typename Traits::Handle;

    UniqueHandle() = default;
    explicit UniqueHandle(Handle handle) : handle_(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept
        : handle_(std::exchange(other.handle_, Traits::None())) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        Reset(std::exchange(other.handle_, Traits::None()));
        return *this;
    }
    ~UniqueHandle() { Reset(); }

    Handle Get() const { return handle_; }
    explicit operator bool() const { return handle_ != Traits::None(); }
    Handle Release() { return std::exchange(handle_, Traits::None()); }
    void Reset(Handle handle = Traits::None()) {
        const Handle old = std::exchange(handle_, handle);
        if (old != Traits::None()) {
            Traits::Close(old);
        }
    }

private:
    Handle handle_ = Traits::None();
};

template <class T>
struct PointerTraits {
    using Handle = T;
    static Handle None() { return nullptr; }
};

struct FileTraits {
    using Handle = HANDLE;
    static Handle None() { return INVALID_HANDLE_VALUE; }
    static void Close(Handle handle) { ::CloseHandle(handle); }
};
struct FindTraits : FileTraits {
    static void Close(Handle handle) { ::FindClose(handle); }
};
struct KernelTraits : PointerTraits<HANDLE> {
    static void Close(Handle handle) { ::CloseHandle(handle); }
};
struct KeyTraits : PointerTraits<HKEY> {
    static void Close(Handle handle) { ::RegCloseKey(handle); }
};
struct WindowTraits : PointerTraits<HWND> {
    static void Close(Handle handle) { ::DestroyWindow(handle); }
};
struct DeviceTraits : PointerTraits<HDC> {
    static void Close(Handle handle) { ::DeleteDC(handle); }
};
template <class T>
struct DrawingTraits : PointerTraits<T> {
    static void Close(T handle) { ::DeleteObject(handle); }
};
template <class T>
struct InterfaceTraits : PointerTraits<T*> {
    static void Close(T* object) { object->Release(); }
};

using UniqueFile = UniqueHandle<FileTraits>;
using UniqueFind = UniqueHandle<FindTraits>;
using UniqueKernelObject = UniqueHandle<KernelTraits>;
using UniqueKey = UniqueHandle<KeyTraits>;
using UniqueWindow = UniqueHandle<WindowTraits>;
using UniqueDevice = UniqueHandle<DeviceTraits>;
using UniqueFont = UniqueHandle<DrawingTraits<HFONT>>;
using UniqueBrush = UniqueHandle<DrawingTraits<HBRUSH>>;
using UniqueBitmap = UniqueHandle<DrawingTraits<HBITMAP>>;
template <class T>
using UniqueInterface = UniqueHandle<InterfaceTraits<T>>;

}  // namespace swiftpatch
