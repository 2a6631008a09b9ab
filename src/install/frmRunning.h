#pragma once

#include <string>

#include "runtime/controls.h"
#include "runtime/form.h"

namespace swiftpatch {

/// The dialog in which error_Message says what went wrong. Given a program name it asks the user
/// to close that program.
class frmRunning : public Form {
public:
    frmRunning();

    // Set by the opener before the dialog is shown.
    std::string program;
    std::string message;
    std::string code;  ///< The caption where it is not empty.

    Label lblWarning;
    CommandButton cmdExit;

    void Form_Load() override;
    void cmdExit_Click();
};

}  // namespace swiftpatch
