#include "runtime/win32/themed_edge.h"

#include "runtime/win32/system_library.h"

// Need the platform's other headers before them, and nobody else uses them.
#include <uxtheme.h>
#include <vssym32.h>

namespace swiftpatch {
namespace {

/// There are visual styles since Windows XP.
struct VisualStyle {
    SystemLibrary library{"uxtheme.dll"};
    LateFunction<decltype(&::OpenThemeData)> Open{library, "OpenThemeData"};
    LateFunction<decltype(&::DrawThemeBackground)> Draw{library, "DrawThemeBackground"};
    LateFunction<decltype(&::CloseThemeData)> Close{library, "CloseThemeData"};
};

const VisualStyle& TheVisualStyle() {
    static const VisualStyle style;
    return style;
}

void DrawEdge(HTHEME theme, HWND window, HDC device) {
    RECT place;
    ::GetWindowRect(window, &place);
    const RECT whole{0, 0, place.right - place.left, place.bottom - place.top};
    // What lies within the edge, scroll bars included, is none of its business.
    const int width = ::GetSystemMetrics(SM_CXEDGE);
    const int height = ::GetSystemMetrics(SM_CYEDGE);
    ::ExcludeClipRect(device, width, height, whole.right - width, whole.bottom - height);
    TheVisualStyle().Draw(theme, device, EP_EDITTEXT, ETS_NORMAL, &whole, nullptr);
}

}  // namespace

void PaintThemedEdge(HWND window) {
    const HTHEME theme = TheVisualStyle().Open(window, L"EDIT");
    if (theme == nullptr) {
        return;
    }
    const HDC device = ::GetWindowDC(window);
    DrawEdge(theme, window, device);
    ::ReleaseDC(window, device);
    TheVisualStyle().Close(theme);
}

}  // namespace swiftpatch
