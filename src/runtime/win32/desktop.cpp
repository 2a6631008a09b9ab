#include "runtime/desktop.h"

#include <exception>

#include "runtime/win32/consent.h"
#include "runtime/win32/win32.h"

namespace swiftpatch {
namespace {

HWND ToWindow(WindowHandle handle) { return reinterpret_cast<HWND>(static_cast<LONG_PTR>(handle)); }

WindowHandle ToHandle(HWND window) { return reinterpret_cast<LONG_PTR>(window); }

struct Enumeration {
    const std::function<bool(WindowHandle)>& callback;
    std::exception_ptr failure;
};

/// An exception may not pass through the system's enumeration: it waits until that is over.
BOOL CALLBACK VisitWindow(HWND window, LPARAM parameter) {
    auto& enumeration = *reinterpret_cast<Enumeration*>(parameter);
    try {
        return !MayFind(window) || enumeration.callback(ToHandle(window)) ? TRUE : FALSE;
    } catch (...) {
        enumeration.failure = std::current_exception();
        return FALSE;
    }
}

}  // namespace

void EnumWindows(const std::function<bool(WindowHandle)>& callback) {
    Enumeration enumeration{callback, nullptr};
    ::EnumWindows(VisitWindow, reinterpret_cast<LPARAM>(&enumeration));
    if (enumeration.failure) {
        std::rethrow_exception(enumeration.failure);
    }
}

int GetClassNameA(WindowHandle window, std::string& buffer) {
    return ::GetClassNameA(ToWindow(window), buffer.data(), static_cast<int>(buffer.size()));
}

int GetWindowTextA(WindowHandle window, std::string& buffer) {
    // For windows of other programs the system returns the title it keeps, without asking them.
    return ::GetWindowTextA(ToWindow(window), buffer.data(), static_cast<int>(buffer.size()));
}

WindowHandle GetParent(WindowHandle window) { return ToHandle(::GetParent(ToWindow(window))); }

std::int32_t SetWindowPos(WindowHandle window, WindowHandle insertAfter, int x, int y, int width,
                          int height, std::uint32_t flags) {
    return ::SetWindowPos(ToWindow(window), ToWindow(insertAfter), x, y, width, height, flags);
}

}  // namespace swiftpatch
