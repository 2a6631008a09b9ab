#pragma once

#include "app/frmSplash1.h"
#include "install/frmLog.h"
#include "mainwindow/frmSwiftPatch.h"
#include "reentry/machine.h"

namespace swiftpatch::reentry {

inline frmSwiftPatch& Window() { return frmSwiftPatch::Instance.Get(); }

inline bool WindowThere() { return frmSwiftPatch::Instance.Exists() && Window().Loaded(); }

inline bool ViewerShown() { return frmLog::Instance.Exists() && frmLog::Instance.Get().Visible(); }

inline bool SplashShown() {
    return frmSplash1::Instance.Exists() && frmSplash1::Instance.Get().Loaded();
}

/// The program and the person at it, from the start to the end.
class Life {
public:
    Life(const Scenario& scenario, MsgBoxAnswer answer, const Intrusions& intrusions,
         bool withYields);
    ~Life();
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;

    Outcome Live();

private:
    void Start();
    void InEachYield();
    MsgBoxAnswer AnswerBox(const std::string& text, int style);
    void AnswerDialog(Form& form);
    std::string Doing() const;

    bool Over() const;
    bool WorkUnderWay() const;
    bool ActAsPlanned();
    bool Do(Deed deed);
    void LeaveAmidDownload(Deed deed, const std::function<void()>& leave);
    void LeaveViewer();
    void UntilQuiet();

    void CheckQuietState();
    void EndByClose();
    void CheckNothingRanAfterTheEnd();
    void CheckFiles();
    void CheckRequests();
    void Problem(const std::string& text) { outcome_.problems.push_back(text); }

    const Scenario& scenario_;
    const MsgBoxAnswer answer_;
    const Intrusions& intrusions_;
    const bool withYields_;
    std::set<Deed> deedsLeft_;
    bool diskFault_ = false;
    bool fileLeftOpenDeliberately_ = false;
    std::int64_t yields_ = 0;
    Outcome outcome_;
    headless::World world_;
};

}  // namespace swiftpatch::reentry
