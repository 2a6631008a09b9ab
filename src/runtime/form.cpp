#include "runtime/form.h"

#include <algorithm>
#include <utility>

#include "runtime/events.h"
#include "runtime/flag_while.h"

namespace swiftpatch {
namespace {

std::vector<std::unique_ptr<Form>>& FormsToDelete() {
    static std::vector<std::unique_ptr<Form>> forms;
    return forms;
}

}  // namespace

Form::Form(std::string name, FormDesign design)
    : Component(ComponentKind::kForm, std::move(name)),
      Caption(*this, PropertyId::kCaption, design.caption),
      BackColor(*this, PropertyId::kBackColor, Color::kButtonFace),
      Pointer(*this, PropertyId::kMousePointer, MousePointer::kDefault),
      TaskbarProgress(*this, PropertyId::kTaskbarProgress, taskbar::kNothing),
      design_(std::move(design)) {}

Form::~Form() {
    if (loaded_) {
        DestroyWindows();
    }
}

void Form::SetTabOrder(const std::vector<Control*>& first) {
    std::vector<Control*> order = first;
    std::copy_if(controls_.begin(), controls_.end(), std::back_inserter(order),
                 [&first](const Control* control) {
                     return std::find(first.begin(), first.end(), control) == first.end();
                 });
    controls_ = std::move(order);
}

void Form::EnsureLoaded() {
    if (loaded_) {
        return;
    }
    loaded_ = true;
    CreateWindows();
    Form_Load();
}

void Form::Show() {
    EnsureLoaded();
    visible_ = true;
    ShowWindows();
}

void Form::ShowModal() {
    EnsureLoaded();
    visible_ = true;
    RunModal();
}

void Form::Hide() {
    visible_ = false;
    HideWindows();
}

bool Form::QueryUnload() {
    if (!loaded_ || unloading_) {
        return false;
    }
    const FlagWhile asking(unloading_);
    const EventsHeld held;
    bool cancel = false;
    Form_QueryUnload(cancel);
    return !cancel;
}

void Form::UnloadUnasked() {
    if (!loaded_ || unloading_) {
        return;
    }
    const FlagWhile going(unloading_);
    Form_Unload();
    loaded_ = false;
    visible_ = false;
    DestroyWindows();
    if (design_.unloadEndsRun) {
        EndRunAtNextPump();
    }
}

void Form::Unload() {
    if (QueryUnload()) {
        UnloadUnasked();
    }
}

WindowHandle Form::Handle() {
    EnsureLoaded();
    return WindowOfForm();
}

void Form::CenterOnScreen() {
    const PixelSize screen = ScreenSize();
    const PixelSize window = WindowSize();
    MoveWindow((screen.width - window.width) / 2, (screen.height - window.height) / 2);
}

void Form::SetScaleHeight(int units) {
    scaleHeight_ = units;
    PaintingChanged();
}

void Form::ClearPainting() {
    painting_.clear();
    PaintingChanged();
}

void Form::PaintBox(const PaintedBox& box) {
    painting_.push_back(box);
    PaintingChanged();
}

void DeleteLater(std::unique_ptr<Form> form) {
    if (form) {
        FormsToDelete().push_back(std::move(form));
    }
}

void DeleteForms() { FormsToDelete().clear(); }

}  // namespace swiftpatch
