#include "runtime/form.h"

#include <algorithm>

#include "runtime/console/attendance.h"
#include "runtime/strings.h"

namespace swiftpatch {
namespace {

std::string TextOn(const Form& form) {
    std::string text;
    for (const Control* control : form.Controls()) {
        if (control->Kind() == ComponentKind::kLabel) {
            const std::string& caption = static_cast<const Label*>(control)->Caption;
            text += (text.empty() ? "" : kCrLf) + caption;
        }
    }
    return text;
}

void PressCancel(const Form& form) {
    for (Control* control : form.Controls()) {
        if (control->Kind() == ComponentKind::kCommandButton &&
            static_cast<CommandButton*>(control)->Cancel) {
            static_cast<CommandButton*>(control)->RaiseClick();
            return;
        }
    }
}

}  // namespace

void Form::CreateWindows() {
    AddForm(*this);
    TheAttendant().Loads(*this);
}

void Form::ShowWindows() {}

void Form::HideWindows() {}

void Form::DestroyWindows() { RemoveForm(*this); }

/// Whatever the form is, it has gone in the end.
void Form::RunModal() {
    TheAttendant().Answer({Name(), Caption, TextOn(*this)});
    PressCancel(*this);
    if (visible_) {
        UnloadUnasked();
    }
}

void Form::PaintingChanged() {}

WindowHandle Form::WindowOfForm() const { return 0; }

PixelSize Form::ScreenSize() { return {}; }

PixelSize Form::WindowSize() const { return {}; }

void Form::MoveWindow(int /*left*/, int /*top*/) {}

}  // namespace swiftpatch
