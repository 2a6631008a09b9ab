#include "runtime/controls.h"

#include <algorithm>
#include <array>

#include "runtime/form.h"
#include "runtime/runtime_error.h"

namespace swiftpatch {

Color Rgb(int red, int green, int blue) {
    const std::array parts{red, green, blue};
    if (std::any_of(parts.begin(), parts.end(), [](int part) { return part < 0 || part > 255; })) {
        throw RuntimeError(error_number::kInvalidProcedureCall);
    }
    return static_cast<Color>(red | green << 8 | blue << 16);
}

Color Grey(int level) { return Rgb(level, level, level); }

Timer::Timer(Form& form, int id, std::string name)
    : Component(ComponentKind::kTimer, std::move(name)),
      Enabled(*this, PropertyId::kEnabled, false),
      Interval(*this, PropertyId::kInterval, 0),
      id_(id) {
    form.timers_.push_back(this);
}

void Timer::RaiseElapsed() {
    if (Enabled && Elapsed) {
        Elapsed();
    }
}

Control::Control(Form& form, int id, std::string name, ComponentKind kind, Frame* container)
    : Component(kind, std::move(name)),
      Visible(*this, PropertyId::kVisible, true),
      Enabled(*this, PropertyId::kEnabled, true),
      id_(id),
      container_(container) {
    form.controls_.push_back(this);
}

void Control::Place(Rect place, Look look) {
    place_ = place;
    look_ = look;
}

Label::Label(Form& form, int id, std::string name, Frame* container)
    : Control(form, id, std::move(name), ComponentKind::kLabel, container),
      Caption(*this, PropertyId::kCaption, {}),
      BackColor(*this, PropertyId::kBackColor, Color::kButtonFace),
      ForeColor(*this, PropertyId::kForeColor, Color::kButtonText),
      Background(*this, PropertyId::kBackStyle, BackStyle::kOpaque),
      FontSize(*this, PropertyId::kFontSize, 0) {}

TextBox::TextBox(Form& form, int id, std::string name)
    : Control(form, id, std::move(name), ComponentKind::kTextBox, nullptr),
      Text(*this, PropertyId::kText, {}) {}

CommandButton::CommandButton(Form& form, int id, std::string name)
    : Control(form, id, std::move(name), ComponentKind::kCommandButton, nullptr),
      Caption(*this, PropertyId::kCaption, {}) {}

void CommandButton::RaiseClick() {
    if (Visible && Enabled && Click) {
        Click();
    }
}

CheckBox::CheckBox(Form& form, int id, std::string name)
    : Control(form, id, std::move(name), ComponentKind::kCheckBox, nullptr),
      Caption(*this, PropertyId::kCaption, {}),
      Value(*this, PropertyId::kValue, CheckState::kUnchecked) {}

void CheckBox::RaisePressed() {
    Value = Value == CheckState::kUnchecked ? CheckState::kChecked : CheckState::kUnchecked;
}

ProgressBar::ProgressBar(Form& form, int id, std::string name)
    : Control(form, id, std::move(name), ComponentKind::kProgressBar, nullptr),
      Min(*this, PropertyId::kMin, 0),
      Max(*this, PropertyId::kMax, 100),
      Value(*this, PropertyId::kValue, 0) {}

Frame::Frame(Form& form, int id, std::string name)
    : Control(form, id, std::move(name), ComponentKind::kFrame, nullptr),
      Caption(*this, PropertyId::kCaption, {}) {}

Animation::Animation(Form& form, int id, std::string name, Frame* container)
    : Control(form, id, std::move(name), ComponentKind::kAnimation, container),
      AutoPlay(*this, PropertyId::kAutoPlay, false) {}

ListView::ListView(Form& form, int id, std::string name)
    : Control(form, id, std::move(name), ComponentKind::kListView, nullptr) {}

Image::Image(Form& form, int id, std::string name)
    : Control(form, id, std::move(name), ComponentKind::kImage, nullptr) {}

}  // namespace swiftpatch
