#pragma once

#include <cstdint>

#include "runtime/controls.h"
#include "runtime/form.h"

namespace swiftpatch {

/// The window of the first seconds: shows who made the program while the settings are loaded, then
/// hands over to frmSwiftPatch.
class frmSplash1 : public Form {
public:
    frmSplash1();

    static inline FormInstance<frmSplash1> Instance;

    Image Image1;
    Label lblLoading;
    Label lbltitle0, lbltitle1;  // Stacked: the one below is the shadow of the one above.
    Label lblMain0, lblMain1;
    Label lblVersion;
    Label lblCopyright;
    CommandButton cmdExit;
    Timer tmrUnload;

    void Form_Load() override;
    void Form_Unload() override;
    void tmrUnload_Timer();
    void cmdExit_Click();

private:
    void Design();
    void SetMain(const std::string& text);
    void ShowMessageOfTheDay();
    void ShowVersion();
    void LoadPreferences();

    std::int32_t topMost_ = 0;
};

}  // namespace swiftpatch
