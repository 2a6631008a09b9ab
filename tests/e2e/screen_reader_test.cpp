// What a screen reader is told of the controls that show no caption.
#include <oleacc.h>

#include "e2e/text.h"
#include "e2e/update_run.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kStage{40000};
constexpr char kLogName[] = "errors.log";

/// A window as screen readers see it.
class Accessible {
public:
    explicit Accessible(HWND window) {
        void* found = nullptr;
        AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                   &found);
        object_ = static_cast<IAccessible*>(found);
        self_.vt = VT_I4;
    }
    ~Accessible() {
        if (object_ != nullptr) {
            object_->Release();
        }
    }
    Accessible(const Accessible&) = delete;
    Accessible& operator=(const Accessible&) = delete;

    std::string Name() const {
        BSTR text = nullptr;
        return object_ != nullptr && object_->get_accName(self_, &text) == S_OK ? Take(text) : "";
    }
    std::string Value() const {
        BSTR text = nullptr;
        return object_ != nullptr && object_->get_accValue(self_, &text) == S_OK ? Take(text) : "";
    }
    LONG Role() const {
        VARIANT role = {};
        return object_ != nullptr && object_->get_accRole(self_, &role) == S_OK ? role.lVal : 0;
    }

private:
    static std::string Take(BSTR text) {
        std::string utf8 = Utf8(std::wstring(text, SysStringLen(text)));
        SysFreeString(text);
        return utf8;
    }

    IAccessible* object_;
    VARIANT self_ = {};
};

class ScreenReader : public UpdateRun {
protected:
    ScreenReader() { CoInitialize(nullptr); }
    ~ScreenReader() override { CoUninitialize(); }

    HWND Part(const Control& control) const {
        for (const HWND part : WindowsInside(updater_->Window(control.form))) {
            if (GetDlgCtrlID(part) == control.id) {
                return part;
            }
        }
        return nullptr;
    }
};

// The names of the two boxes of text go another way, which Wine does not know.
TEST_F(ScreenReader, IsToldWhatShowsNoCaption) {
    folder_->WriteSettings(ServerFolder(), std::string("LogFileName=") + kLogName + "\r\n");
    folder_->Write(kLogName, "The disk is full.\r\n");
    Install("3.0.11.0");
    StartToMainWindow();
    EXPECT_EQ(Accessible(Part(kProgressBar1)).Name(), "Download progress");
    EXPECT_EQ(Accessible(Part(kAnimation1)).Name(), "Work under way");
    EXPECT_EQ(Accessible(Part(kLstStat)).Name(), "Status list");
    EXPECT_EQ(Accessible(Part(kTxtDebug)).Role(), ROLE_SYSTEM_TEXT);
    updater_->AwaitWindow(kFailure, kStage);
    updater_->Press(kFailureExit);
    updater_->Press(kCmdReadLog);
    updater_->AwaitWindow(kLog, kStage);
    const Accessible log(Part(kTxtLogFile));
    EXPECT_EQ(log.Role(), ROLE_SYSTEM_TEXT);
    EXPECT_EQ(log.Value(), "The disk is full.\r\n");
    updater_->Press(kCmdMain);
    updater_->AwaitWindow(kMain, kStage);
    Close();
}

}  // namespace
}  // namespace swiftpatch::e2e
