#pragma once

#include <deque>
#include <functional>
#include <string>

#include "runtime/form.h"
#include "runtime/headless/trace.h"
#include "runtime/msgbox.h"

namespace swiftpatch::headless {

/// The scripted person at the screen. A box or dialog that nothing was scripted for fails the
/// test, and so does a script that was never needed.
class User {
public:
    explicit User(Trace& trace) : trace_(trace) {}
    ~User();
    User(const User&) = delete;
    User& operator=(const User&) = delete;

    /// The next message box must contain `text` in its text or title; it gets this answer after
    /// `whileOpen` has run.
    void Answer(const std::string& text, MsgBoxAnswer answer = MsgBoxAnswer::kOk,
                std::function<void()> whileOpen = {});
    /// The next modal form must be of that name; `act` has to close it.
    void AtDialog(const std::string& form, std::function<void(Form&)> act);

    /// Answers every box that nothing was scripted for; what it does happens while the box is open.
    std::function<MsgBoxAnswer(const std::string& text, int style, const std::string& title)>
        onAnyBox;
    /// Deals with every dialog that nothing was scripted for; it has to close it.
    std::function<void(Form&)> onAnyDialog;

    // Used by the runtime.
    MsgBoxAnswer ShowBox(const std::string& text, int style, const std::string& title);
    void ShowDialog(Form& form);

    /// True when the person can reach a control of that form: no box and no other modal form is
    /// in the way.
    bool CanReach(const Form& form) const;
    /// The modal form that was opened last, or null.
    Form* TopDialog() const { return modal_.empty() ? nullptr : modal_.back(); }
    int OpenBoxes() const { return openBoxes_; }

private:
    struct BoxScript {
        std::string text;
        MsgBoxAnswer answer;
        std::function<void()> whileOpen;
    };
    struct DialogScript {
        std::string form;
        std::function<void(Form&)> act;
    };

    bool TakeBoxScript(const std::string& text, const std::string& title, BoxScript& script);

    Trace& trace_;
    std::deque<BoxScript> boxes_;
    std::deque<DialogScript> dialogs_;
    std::deque<Form*> modal_;
    int openBoxes_ = 0;
};

}  // namespace swiftpatch::headless
