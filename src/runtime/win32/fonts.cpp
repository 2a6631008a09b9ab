#include "runtime/win32/fonts.h"

#include <cstring>
#include <string_view>

namespace swiftpatch {
namespace {

/// The device context of the screen.
class Screen {
public:
    Screen() : device_(::GetDC(nullptr)) {}
    ~Screen() { ::ReleaseDC(nullptr, device_); }
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    HDC Get() const { return device_; }

private:
    HDC device_;
};

LOGFONTA MessageFont() {
    NONCLIENTMETRICSA metrics{};
    metrics.cbSize = sizeof(metrics);
    if (::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0)) {
        return metrics.lfMessageFont;
    }
    LOGFONTA font{};
    ::GetObjectA(::GetStockObject(DEFAULT_GUI_FONT), sizeof(font), &font);
    return font;
}

}  // namespace

UniqueFont MakeFont(const Look& look, int points) {
    LOGFONTA font = MessageFont();
    if (points > 0) {
        font.lfHeight = -::MulDiv(points, ::GetDeviceCaps(Screen().Get(), LOGPIXELSY), 72);
    }
    if (look.bold) {
        font.lfWeight = FW_BOLD;
    }
    if (look.fixedPitch) {
        font.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
        std::strcpy(font.lfFaceName, "Courier New");
    }
    return UniqueFont(::CreateFontIndirectA(&font));
}

SIZE BaseUnits(HFONT font) {
    // The system's own way for dialogs with a font of their own.
    constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const Screen screen;
    const HGDIOBJ before = ::SelectObject(screen.Get(), font);
    SIZE letters{};
    TEXTMETRICA metrics{};
    ::GetTextExtentPoint32A(screen.Get(), kLetters.data(), static_cast<int>(kLetters.size()),
                            &letters);
    ::GetTextMetricsA(screen.Get(), &metrics);
    ::SelectObject(screen.Get(), before);
    return {(letters.cx / 26 + 1) / 2, metrics.tmHeight};
}

RECT ToPixels(const Rect& place, const SIZE& baseUnits) {
    const auto horizontal = [&baseUnits](int units) { return ::MulDiv(units, baseUnits.cx, 4); };
    const auto vertical = [&baseUnits](int units) { return ::MulDiv(units, baseUnits.cy, 8); };
    return {horizontal(place.left), vertical(place.top), horizontal(place.left + place.width),
            vertical(place.top + place.height)};
}

}  // namespace swiftpatch
