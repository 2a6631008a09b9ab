#pragma once

#include <string>

namespace swiftpatch {

/// The parts of a message box's style; the system's MB_xxx numbers.
namespace msgbox {
inline constexpr int kOkOnly = 0;
inline constexpr int kYesNo = 4;
inline constexpr int kCritical = 16;
inline constexpr int kQuestion = 32;
inline constexpr int kInformation = 64;
}  // namespace msgbox

enum class MsgBoxAnswer { kOk = 1, kYes = 6, kNo = 7 };

/// What the button of an answer says.
constexpr const char* NameOf(MsgBoxAnswer answer) {
    switch (answer) {
        case MsgBoxAnswer::kYes:
            return "Yes";
        case MsgBoxAnswer::kNo:
            return "No";
        default:
            return "OK";
    }
}

/// Shows the system's message box, owned by the active form, and waits for the answer.
/// `title` empty: the application's title. Pumps: timers fire while the box is open.
/// Throws EndProgram when the run ended meanwhile.
MsgBoxAnswer MsgBox(const std::string& text, int style = msgbox::kOkOnly,
                    const std::string& title = {});

}  // namespace swiftpatch
