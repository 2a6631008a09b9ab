#include "e2e/controls.h"

#include <array>

namespace swiftpatch::e2e {

std::string NameOf(const std::wstring& form, int id) {
    static constexpr std::array kControls{
        kTxtDebug,      kChkRunTolvex,     kCmdInstall,    kCmdRetry,    kCmdReadLog,
        kCmdClose,      kProgressBar1,     kFraMessages,   kAnimation1,  kLblAnimationMsg,
        kLstStat,       kLblTolvexVersion, kLblSimulation, kLblVersion,  kLblStatus,
        kSplashLoading, kSplashTitle0,     kSplashTitle1,  kSplashMain0, kSplashMain1,
        kSplashVersion, kSplashExit,       kFailureText,   kFailureExit, kTxtLogFile,
        kCmdMain,
    };
    for (const Control& control : kControls) {
        if (control.id == id && form == control.form) {
            return control.name;
        }
    }
    return "control " + std::to_string(id);
}

}  // namespace swiftpatch::e2e
