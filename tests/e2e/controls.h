#pragma once

#include <string>

#include "e2e/win32.h"

namespace swiftpatch::e2e {

/// A control of the product: the class of its window, its id in it, and its name.
struct Control {
    const wchar_t* form;
    int id;
    const char* name;
};

inline constexpr wchar_t kSplash[] = L"frmSplash1";
inline constexpr wchar_t kMain[] = L"frmSwiftPatch";
inline constexpr wchar_t kFailure[] = L"frmRunning";
inline constexpr wchar_t kLog[] = L"frmLog";

inline constexpr Control kTxtDebug{kMain, 101, "txtDebug"};
inline constexpr Control kChkRunTolvex{kMain, 103, "chkRunTolvex"};
inline constexpr Control kCmdInstall{kMain, 104, "cmdInstall"};
inline constexpr Control kCmdRetry{kMain, 105, "cmdRetry"};
inline constexpr Control kCmdReadLog{kMain, 106, "cmdReadLog"};
inline constexpr Control kCmdClose{kMain, 108, "cmdClose"};
inline constexpr Control kCmdGoBack{kMain, 109, "cmdGoBack"};
inline constexpr Control kProgressBar1{kMain, 110, "ProgressBar1"};
inline constexpr Control kFraMessages{kMain, 111, "fraMessages"};
inline constexpr Control kAnimation1{kMain, 112, "Animation1"};
inline constexpr Control kLblAnimationMsg{kMain, 113, "lblAnimationMsg"};
inline constexpr Control kLstStat{kMain, 114, "lstStat"};
inline constexpr Control kLblTolvexVersion{kMain, 115, "lblTolvexVersion"};
inline constexpr Control kLblSimulation{kMain, 116, "lblSimulation"};
inline constexpr Control kLblVersion{kMain, 117, "lblVersion"};
inline constexpr Control kLblStatus{kMain, 118, "lblStatus"};

inline constexpr Control kSplashLoading{kSplash, 201, "lblLoading"};
inline constexpr Control kSplashTitle0{kSplash, 202, "lbltitle(0)"};
inline constexpr Control kSplashTitle1{kSplash, 203, "lbltitle(1)"};
inline constexpr Control kSplashMain0{kSplash, 204, "lblMain(0)"};
inline constexpr Control kSplashMain1{kSplash, 205, "lblMain(1)"};
inline constexpr Control kSplashVersion{kSplash, 206, "lblVersion"};
inline constexpr Control kSplashExit{kSplash, 208, "cmdExit"};

inline constexpr Control kFailureText{kFailure, 301, "lblWarning"};
inline constexpr Control kFailureExit{kFailure, 302, "cmdExit"};

inline constexpr Control kTxtLogFile{kLog, 401, "txtLogFile"};
inline constexpr Control kCmdMain{kLog, 402, "cmdMain"};

/// The name of the control with this id in a window of this class; the id itself where it is none
/// of the above.
std::string NameOf(const std::wstring& form, int id);

/// A control of the main window by its name; throws DriveError where there is none.
Control MainControl(const std::string& name);

}  // namespace swiftpatch::e2e
