#include "e2e/hurry.h"

#include <algorithm>

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kLongestStart{60000};
constexpr WPARAM kSplashTimer = 209;
constexpr WPARAM kCheckTimer = 107;

// A timer that is not running takes no notice.
void Fire(HWND window, WPARAM timer) {
    if (window != nullptr) {
        PostMessageW(window, WM_TIMER, timer, 0);
    }
}

}  // namespace

void HurryIntoCheck(const Updater& updater) {
    const auto checking = [&updater] {
        // Its first text is there once the check has begun.
        if (!updater.Running().Running() || !updater.Text(kLblAnimationMsg).empty()) {
            return true;
        }
        Fire(updater.Window(kSplash), kSplashTimer);
        Fire(updater.Window(kMain), kCheckTimer);
        AnswerWhateverAsks(updater);
        return false;
    };
    Await("the start of the check", checking, kLongestStart);
}

bool AnswerWhateverAsks(const Updater& updater) {
    try {
        if (const std::optional<Box> box = updater.MessageBoxNow()) {
            // An empty one is not complete yet.
            if (!box->buttons.empty()) {
                const bool asks =
                    std::count(box->buttons.begin(), box->buttons.end(), int{IDYES}) != 0;
                updater.Answer(*box, asks ? IDYES : IDOK);
            }
            return true;
        }
        if (updater.Window(kFailure) != nullptr) {
            updater.Press(kFailureExit);
            return true;
        }
    } catch (const DriveError&) {
        return true;  // It went by itself; the next look tells.
    }
    return false;
}

}  // namespace swiftpatch::e2e
