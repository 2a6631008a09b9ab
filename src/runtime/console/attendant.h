#pragma once

#include <string>

#include "runtime/form.h"
#include "runtime/msgbox.h"

namespace swiftpatch {

/// What would have stood on the screen and waited for an answer: a message box, or a modal form.
struct Question {
    std::string form;  ///< The form's name; kMessageBox for a message box.
    std::string title;
    std::string text;  ///< Of a form: that of its labels.
    int style = msgbox::kOkOnly;
};

inline constexpr const char* kMessageBox = "MsgBox";

/// Takes the place of the person in front of the program: is told what would have been seen, gives
/// every answer, and is asked before anything is done that it may want to keep from happening. The
/// program knows nothing of it. None of these may pump but Rest.
class Attendant {
public:
    /// A form is about to be loaded.
    virtual void Loads(const Form& form) = 0;
    /// A property has another value.
    virtual void Saw(const Component& component, PropertyId id) = 0;
    /// The one place where anything is asked. For a modal form the answer does not matter: its
    /// button for Esc is pressed.
    virtual MsgBoxAnswer Answer(const Question& question) = 0;
    /// Nothing is left to do: no message waits, and no timer. False when something is under way
    /// that will go on by itself.
    virtual bool Rest() = 0;
    /// Comes every second, whoever pumps.
    virtual void Look() = 0;

    // What is asked for before it happens, or answered in the system's place.

    /// Whether a window of another program may be sent a message.
    virtual bool MaySend(WindowHandle window) = 0;
    /// Whether the window answered in time.
    virtual void Sent(WindowHandle window, bool answered) = 0;
    virtual bool MayDelete(const std::string& path) = 0;
    /// Whether the program is to find a file; `found` is what the system says.
    virtual bool IsThere(const std::string& path, bool found) = 0;
    /// Where it may not be, the run ends.
    virtual bool MayRequest(const std::string& url, const std::string& verb) = 0;

protected:
    Attendant() = default;
    ~Attendant() = default;
    Attendant(const Attendant&) = default;
    Attendant& operator=(const Attendant&) = default;
};

}  // namespace swiftpatch
