#include "runtime/msgbox.h"

#include "runtime/app.h"
#include "runtime/console/attendance.h"
#include "runtime/win32/pump.h"

namespace swiftpatch {

MsgBoxAnswer MsgBox(const std::string& text, int style, const std::string& title) {
    ThrowIfOver();
    const MsgBoxAnswer answer =
        TheAttendant().Answer({kMessageBox, title.empty() ? App::Title() : title, text, style});
    ThrowIfOver();
    return answer;
}

}  // namespace swiftpatch
