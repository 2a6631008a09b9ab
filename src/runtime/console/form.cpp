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

bool IsCancel(const Control* control) {
    return control->Kind() == ComponentKind::kCommandButton &&
           static_cast<const CommandButton*>(control)->Cancel;
}

void PressCancel(const Form& form) {
    const auto& controls = form.Controls();
    const auto found = std::find_if(controls.begin(), controls.end(), IsCancel);
    if (found != controls.end()) {
        static_cast<CommandButton*>(*found)->RaiseClick();
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
