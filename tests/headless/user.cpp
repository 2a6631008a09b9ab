#include "headless/user.h"

#include <gtest/gtest.h>

#include "headless/nested.h"

namespace swiftpatch::headless {
namespace {

const char* NameOf(MsgBoxAnswer answer) {
    switch (answer) {
        case MsgBoxAnswer::kYes:
            return "Yes";
        case MsgBoxAnswer::kNo:
            return "No";
        default:
            return "OK";
    }
}

}  // namespace

User::~User() {
    for (const BoxScript& box : boxes_) {
        ADD_FAILURE() << "no message box came with: " << box.text;
    }
    for (const DialogScript& dialog : dialogs_) {
        ADD_FAILURE() << "no dialog came of the form " << dialog.form;
    }
}

void User::Answer(const std::string& text, MsgBoxAnswer answer, std::function<void()> whileOpen) {
    boxes_.push_back({text, answer, std::move(whileOpen)});
}

void User::AtDialog(const std::string& form, std::function<void(Form&)> act) {
    dialogs_.push_back({form, std::move(act)});
}

MsgBoxAnswer User::ShowBox(const std::string& text, int style, const std::string& title) {
    const std::string box = std::to_string(style) + " " + Quoted(title) + " " + Quoted(text);
    const bool yesNo = (style & 15) == msgbox::kYesNo;
    MsgBoxAnswer answer = yesNo ? MsgBoxAnswer::kNo : MsgBoxAnswer::kOk;
    if (boxes_.empty() || (text.find(boxes_.front().text) == std::string::npos &&
                           title.find(boxes_.front().text) == std::string::npos)) {
        ADD_FAILURE() << "unscripted message box: " << box;
    } else {
        const BoxScript script = std::move(boxes_.front());
        boxes_.pop_front();
        answer = script.answer;
        EXPECT_EQ(yesNo, answer != MsgBoxAnswer::kOk) << "no such button in the box: " << box;
        const Nested open(openBoxes_);
        if (script.whileOpen) {
            script.whileOpen();
        }
    }
    trace_.Add("MsgBox " + box + " -> " + NameOf(answer));
    return answer;
}

void User::ShowDialog(Form& form) {
    trace_.Add(form.Name() + ".ShowModal");
    if (dialogs_.empty() || dialogs_.front().form != form.Name()) {
        ADD_FAILURE() << "unscripted dialog: " << form.Name();
        form.Unload();
        return;
    }
    const DialogScript script = std::move(dialogs_.front());
    dialogs_.pop_front();
    modal_.push_back(&form);
    try {
        script.act(form);
    } catch (...) {
        modal_.pop_back();
        throw;
    }
    modal_.pop_back();
    if (form.Visible()) {
        ADD_FAILURE() << "the script left the dialog open: " << form.Name();
        form.Unload();
    }
}

bool User::CanReach(const Form& form) const {
    return openBoxes_ == 0 && (modal_.empty() || modal_.back() == &form);
}

}  // namespace swiftpatch::headless
