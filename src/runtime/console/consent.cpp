// Functions of the Win32 side that the attendant is asked about. The linker puts those of this file
// in front of them (--wrap, in CMakeLists.txt): whoever calls the function comes here, and what
// stands behind it has the name with "real". Their names are those that the compiler makes.
//
// A window that is sent a message may take as long as it likes, and one that asks its own person
// for ever. So what is sent has a limit here.
#include "runtime/console/attendance.h"
#include "runtime/desktop.h"
#include "runtime/events.h"
#include "runtime/files.h"
#include "runtime/win32/win32.h"

namespace swiftpatch {
namespace {

constexpr UINT kLongestAnswer = 4000;  // Milliseconds.
constexpr std::int32_t kRefused = 1;   // What a window that did not close has answered.

}  // namespace

#define SWIFTPATCH_TEXT "RKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE"

std::int32_t SendIfAllowed(
    WindowHandle window, std::uint32_t message, std::uint32_t wParam,
    std::int32_t lParam) __asm__("___wrap__ZN10swiftpatch12SendMessageAEijji");
void KillReally(const std::string& path) __asm__("___real__ZN10swiftpatch4KillE" SWIFTPATCH_TEXT);
void KillIfAllowed(const std::string& path) __asm__(
    "___wrap__ZN10swiftpatch4KillE" SWIFTPATCH_TEXT);
bool ExistsReally(const std::string& path) __asm__(
    "___real__ZN10swiftpatch10FileExistsE" SWIFTPATCH_TEXT);
bool ExistsForProgram(const std::string& path) __asm__(
    "___wrap__ZN10swiftpatch10FileExistsE" SWIFTPATCH_TEXT);
void CleanUpReally(const std::string& folder) __asm__(
    "___real__ZN10swiftpatch20RemoveUnfinishedCopyE" SWIFTPATCH_TEXT);
void CleanUpIfAllowed(const std::string& folder) __asm__(
    "___wrap__ZN10swiftpatch20RemoveUnfinishedCopyE" SWIFTPATCH_TEXT);

/// The transfer control as its callers see it, and as it is: both are the same object, and a member
/// function has a way of its own to be handed that.
class InetBehind {
public:
    void Execute(const std::string& url, const std::string& verb) __asm__(
        "___real__ZN10swiftpatch4Inet7ExecuteE" SWIFTPATCH_TEXT "S8_");
};

class InetInFront {
public:
    void Execute(const std::string& url, const std::string& verb) __asm__(
        "___wrap__ZN10swiftpatch4Inet7ExecuteE" SWIFTPATCH_TEXT "S8_");
};

std::int32_t SendIfAllowed(WindowHandle window, std::uint32_t message, std::uint32_t wParam,
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

void KillIfAllowed(const std::string& path) {
    if (TheAttendant().MayDelete(path)) {
        KillReally(path);
    }
}

bool ExistsForProgram(const std::string& path) {
    return TheAttendant().IsThere(path, ExistsReally(path));
}

void CleanUpIfAllowed(const std::string& folder) {
    if (TheAttendant().MayDelete(folder)) {
        CleanUpReally(folder);
    }
}

void InetInFront::Execute(const std::string& url, const std::string& verb) {
    if (!TheAttendant().MayRequest(url, verb)) {
        End();
    }
    reinterpret_cast<InetBehind*>(this)->Execute(url, verb);
}

}  // namespace swiftpatch
