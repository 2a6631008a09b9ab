#include <gtest/gtest.h>

#include "runtime/events.h"
#include "runtime/win32/win32.h"

namespace swiftpatch::real_system {
namespace {

constexpr const char* kClass = "PumpTest";
constexpr UINT kMessage = WM_APP;

/// A window that counts what it is sent.
class Pump : public testing::Test {
protected:
    Pump() {
        WNDCLASSA counting{};
        counting.lpfnWndProc = Count;
        counting.hInstance = GetModuleHandleA(nullptr);
        counting.lpszClassName = kClass;
        RegisterClassA(&counting);
        window = CreateWindowExA(0, kClass, "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                 counting.hInstance, nullptr);
        DoEvents();
    }
    ~Pump() override {
        DestroyWindow(window);
        UnregisterClassA(kClass, GetModuleHandleA(nullptr));
    }

    void Post() const { PostMessageA(window, kMessage, 0, 0); }
    int Handled() const { return static_cast<int>(GetWindowLongA(window, GWL_USERDATA)); }

    HWND window;

private:
    static LRESULT CALLBACK Count(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == kMessage) {
            SetWindowLongA(window, GWL_USERDATA, GetWindowLongA(window, GWL_USERDATA) + 1);
            return 0;
        }
        return DefWindowProcA(window, message, wParam, lParam);
    }
};

TEST_F(Pump, RestingYieldHandlesWhatHasCome) {
    Post();
    DoEventsResting();
    EXPECT_EQ(Handled(), 1);
}

TEST_F(Pump, WaitingYieldHandlesWhatHasCome) {
    Post();
    DoEventsWaiting();
    EXPECT_EQ(Handled(), 1);
}

// As a message box does with what comes while it closes.
TEST_F(Pump, RestingLoopFindsWhatAnotherLoopLookedAtAndLeft) {
    Post();
    MSG message;
    PeekMessageA(&message, window, 0, 0, PM_NOREMOVE);
    for (int yields = 0; yields < 500 && Handled() == 0; ++yields) {
        DoEventsResting();
    }
    EXPECT_EQ(Handled(), 1);
}

}  // namespace
}  // namespace swiftpatch::real_system
