#include "e2e/controls.h"

#include <array>

#include "e2e/drive_error.h"

namespace swiftpatch::e2e {
namespace {

constexpr std::array kControls{
    kTxtDebug,      kChkRunTolvex,     kCmdInstall,    kCmdRetry,    kCmdReadLog,
    kCmdClose,      kProgressBar1,     kFraMessages,   kAnimation1,  kLblAnimationMsg,
    kLstStat,       kLblTolvexVersion, kLblSimulation, kLblVersion,  kLblStatus,
    kSplashLoading, kSplashTitle0,     kSplashTitle1,  kSplashMain0, kSplashMain1,
    kSplashVersion, kSplashExit,       kFailureText,   kFailureExit, kTxtLogFile,
    kCmdMain,       kCmdGoBack,
};

}  // namespace

std::string NameOf(const std::wstring& form, int id) {
    for (const Control& control : kControls) {
        if (control.id == id && form == control.form) {
            return control.name;
        }
    }
    return "control " + std::to_string(id);
}

Control MainControl(const std::string& name) {
    for (const Control& control : kControls) {
        if (name == control.name && std::wstring(kMain) == control.form) {
            return control;
        }
    }
    throw DriveError("the main window has no " + name);
}

}  // namespace swiftpatch::e2e
