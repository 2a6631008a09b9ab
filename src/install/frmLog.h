#pragma once

#include <string>

#include "runtime/controls.h"
#include "runtime/form.h"

namespace swiftpatch {

/// Shows the main program's error log in place of the main window. The file is read afresh at
/// every visit and never written.
class frmLog : public Form {
public:
    frmLog();

    static inline FormInstance<frmLog> Instance;

    /// Bare name of the log in the application folder; set by the main window before it shows the
    /// viewer.
    std::string LogFileName;

    TextBox txtLogFile;
    CommandButton cmdMain;

    void Form_Load() override;
    void Form_Unload() override;
    void cmdMain_Click();
    /// Fills txtLogFile with the log, every line followed by CR LF. Without a name or a file the
    /// box keeps what it holds. Errors while reading are not trapped.
    void LoadLogFile();
};

}  // namespace swiftpatch
