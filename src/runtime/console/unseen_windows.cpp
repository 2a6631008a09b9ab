// Every window of this program is for messages alone: not even a tool that shows hidden windows can
// bring one up, and the run needs no screen. The linker puts this in front of the system's function
// (--wrap, in CMakeLists.txt), of which the compiler knows a pointer.
#include "runtime/win32/win32.h"

namespace {

using Create = decltype(&::CreateWindowExA);

}  // namespace

extern "C" {

extern const Create createReally __asm__("___real__imp__CreateWindowExA@48");
extern const Create createUnseen __asm__("___wrap__imp__CreateWindowExA@48");

static HWND WINAPI CreateUnseen(DWORD extendedStyle, LPCSTR kind, LPCSTR title, DWORD style, int x,
                                int y, int width, int height, HWND /*parent*/, HMENU menu,
                                HINSTANCE instance, LPVOID parameter) {
    const HWND window = createReally(extendedStyle, kind, title, style, x, y, width, height,
                                     HWND_MESSAGE, menu, instance, parameter);
    if (window != nullptr) {
        return window;
    }
    // Before Windows 2000 there are none of these. This one is made without being shown.
    return createReally(extendedStyle, kind, title, style, x, y, width, height, nullptr, menu,
                        instance, parameter);
}

const Create createUnseen = CreateUnseen;
}
