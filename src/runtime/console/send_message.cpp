// A window that is sent a message may take as long as it likes, and one that asks its own person
// for ever. So what is sent has a limit here.
#include "runtime/console/attendance.h"
#include "runtime/desktop.h"
#include "runtime/win32/win32.h"

namespace swiftpatch {
namespace {

constexpr UINT kLongestAnswer = 4000;  // Milliseconds.
constexpr std::int32_t kRefused = 1;   // What a window that did not close has answered.

}  // namespace

std::int32_t SendMessageA(WindowHandle window, std::uint32_t message, std::uint32_t wParam,
                          std::int32_t lParam) {
    if (!TheAttendant().MaySend(window)) {
        return 0;
    }
    DWORD_PTR answer = 0;
    const HWND target = reinterpret_cast<HWND>(static_cast<LONG_PTR>(window));
    const bool answered = ::SendMessageTimeoutA(target, message, wParam, lParam, SMTO_ABORTIFHUNG,
                                                kLongestAnswer, &answer) != 0 ||
                          ::IsWindow(target) == FALSE;
    TheAttendant().Sent(window, answered);
    return answered ? static_cast<std::int32_t>(answer) : kRefused;
}

}  // namespace swiftpatch
