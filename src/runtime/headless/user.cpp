#include "runtime/headless/user.h"

#include <utility>

#include "runtime/headless/misuse.h"
#include "runtime/headless/nested.h"

namespace swiftpatch::headless {
User::~User() {
    for (const BoxScript& box : boxes_) {
        ReportMisuse("no message box came with: " + box.text);
    }
    for (const DialogScript& dialog : dialogs_) {
        ReportMisuse("no dialog came of the form " + dialog.form);
    }
}

void User::Answer(const std::string& text, MsgBoxAnswer answer, std::function<void()> whileOpen) {
    boxes_.push_back({text, answer, std::move(whileOpen)});
}

void User::AtDialog(const std::string& form, std::function<void(Form&)> act) {
    dialogs_.push_back({form, std::move(act)});
}

bool User::TakeBoxScript(const std::string& text, const std::string& title, BoxScript& script) {
    if (boxes_.empty() || (text.find(boxes_.front().text) == std::string::npos &&
                           title.find(boxes_.front().text) == std::string::npos)) {
        return false;
    }
    script = std::move(boxes_.front());
    boxes_.pop_front();
    return true;
}

MsgBoxAnswer User::ShowBox(const std::string& text, int style, const std::string& title) {
    const std::string box = std::to_string(style) + " " + Quoted(title) + " " + Quoted(text);
    const bool yesNo = (style & 15) == msgbox::kYesNo;
    MsgBoxAnswer answer = yesNo ? MsgBoxAnswer::kNo : MsgBoxAnswer::kOk;
    BoxScript script;
    if (TakeBoxScript(text, title, script)) {
        answer = script.answer;
        if (yesNo == (answer == MsgBoxAnswer::kOk)) {
            ReportMisuse("no such button in the box: " + box);
        }
        const Nested open(openBoxes_);
        if (script.whileOpen) {
            script.whileOpen();
        }
    } else if (onAnyBox) {
        const Nested open(openBoxes_);
        answer = onAnyBox(text, style, title);
    } else {
        ReportMisuse("unscripted message box: " + box);
    }
    trace_.Add("MsgBox " + box + " -> " + NameOf(answer));
    return answer;
}

void User::ShowDialog(Form& form) {
    trace_.Add(form.Name() + ".ShowModal");
    std::function<void(Form&)> act = onAnyDialog;
    if (!dialogs_.empty() && dialogs_.front().form == form.Name()) {
        act = std::move(dialogs_.front().act);
        dialogs_.pop_front();
    }
    if (!act) {
        ReportMisuse("unscripted dialog: " + form.Name());
        form.Unload();
        return;
    }
    modal_.push_back(&form);
    try {
        act(form);
    } catch (...) {
        modal_.pop_back();
        throw;
    }
    modal_.pop_back();
    if (form.Visible()) {
        ReportMisuse("the script left the dialog open: " + form.Name());
        form.Unload();
    }
}

bool User::CanReach(const Form& form) const {
    return openBoxes_ == 0 && (modal_.empty() || modal_.back() == &form);
}

}  // namespace swiftpatch::headless
