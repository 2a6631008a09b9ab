#include "runtime/msgbox.h"

#include "runtime/app.h"
#include "runtime/events.h"
#include "runtime/headless/world.h"
#include "runtime/runtime_error.h"

namespace swiftpatch {

MsgBoxAnswer MsgBox(const std::string& text, int style, const std::string& title) {
    if (RunIsOver()) {
        throw EndProgram();
    }
    const MsgBoxAnswer answer =
        headless::TheWorld().user.ShowBox(text, style, title.empty() ? App::Title() : title);
    if (RunIsOver()) {
        throw EndProgram();
    }
    return answer;
}

}  // namespace swiftpatch
