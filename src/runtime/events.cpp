#include "runtime/events.h"

#include "runtime/msgbox.h"
#include "runtime/runtime_error.h"

namespace swiftpatch {

void RaiseEvent(const std::function<void()>& procedure) {
    try {
        procedure();
    } catch (const RuntimeError& error) {
        MsgBox(UntrappedErrorText(error), msgbox::kCritical);
        End();
    }
}

}  // namespace swiftpatch
