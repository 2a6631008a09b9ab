#include "app/splash_background.h"

#include <array>

#include "runtime/clock.h"
#include "runtime/events.h"
#include "runtime/form.h"
#include "runtime/system.h"

namespace swiftpatch {
namespace {

constexpr int kLevels = 255;
constexpr int kBoxSize = 840;
constexpr int kAnyWidth = 16384;  // Pixels: more than any screen has.

/// A scheme's colour at the top of the window; it gets darker downwards.
struct Scheme {
    int red;
    int green;
    int blue;
};

constexpr std::array kSchemes{Scheme{24, 72, 168}, Scheme{16, 112, 112}, Scheme{96, 48, 144},
                              Scheme{64, 84, 112}};

void FadeToBlack(Form& form) {
    for (int level = kLevels; level >= 0; --level) {
        DoEvents();
        form.BackColor = Grey(level);
    }
}

void SetUpDrawing(Form& form) {
    form.SetScaleHeight(kLevels);
    form.ClearPainting();
    form.PaintBox({0, 0, kBoxSize, kBoxSize, Color::kBlack});
}

void PaintScheme(Form& form, const Scheme& scheme) {
    for (int row = 0; row < kLevels; ++row) {
        const int light = kLevels - row * 3 / 4;
        const Color color = Rgb(scheme.red * light / kLevels, scheme.green * light / kLevels,
                                scheme.blue * light / kLevels);
        form.PaintBox({0, row, kAnyWidth, row + 1, color});
    }
}

}  // namespace

void PaintSplashBackground(Form& form) {
    FadeToBlack(form);
    SetUpDrawing(form);
    if (HighContrast()) {
        return;  // It stays white on black.
    }
    const auto second = static_cast<std::size_t>(PartsOf(Now()).second);
    PaintScheme(form, kSchemes[second % kSchemes.size()]);
}

}  // namespace swiftpatch
