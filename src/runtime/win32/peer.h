#pragma once

#include <memory>
#include <vector>

#include "runtime/form.h"
#include "runtime/win32/handle.h"

namespace swiftpatch {

/// The platform's side of a component. `window` is null once the window has gone.
struct Peer {
    explicit Peer(HWND itsWindow) : window(itsWindow) {}
    virtual ~Peer() = default;
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    HWND window;
};

struct FormPeer;

/// A part of a form: knows the form's peer as long as both live, whichever goes first.
struct MemberPeer : Peer {
    MemberPeer(FormPeer& itsForm, HWND itsWindow);
    ~MemberPeer() override;
    /// Lets go of the window, which is about to be destroyed with the form's.
    virtual void Leave();

    FormPeer* form;
};

struct ControlPeer final : MemberPeer {
    ControlPeer(FormPeer& itsForm, Control& itsControl, HWND itsWindow);
    ~ControlPeer() override;
    void Leave() override;

    Control& control;
    WNDPROC original;    ///< The window procedure of the system's class.
    UniqueFont ownFont;  ///< Where the control does not use the form's.
    UniqueInterface<IPicture> picture;
    bool changed = false;  ///< Something was set and has not been painted since.
};

/// A timer has no window of its own: its ticks go to the form's.
struct TimerPeer final : MemberPeer {
    TimerPeer(FormPeer& itsForm, Timer& itsTimer);
    ~TimerPeer() override;
    void Leave() override;
    /// Starts, restarts or stops the system's timer as the properties say.
    void Follow();

    Timer& timer;
};

/// Disables the program's other windows for as long as it lives.
class OthersDisabled {
public:
    explicit OthersDisabled(HWND exceptThis);
    ~OthersDisabled();
    OthersDisabled(const OthersDisabled&) = delete;
    OthersDisabled& operator=(const OthersDisabled&) = delete;

private:
    std::vector<HWND> windows_;
};

struct FormPeer final : Peer {
    FormPeer(Form& itsForm, UniqueFont itsFont, HWND itsWindow);
    ~FormPeer() override;
    /// Lets go of the window, with everything on it.
    void Leave();

    Form& form;
    UniqueFont font;
    SIZE baseUnits;
    UniqueBrush brush;
    COLORREF brushColor = 0;
    bool backgroundStale = false;       ///< To be painted, and nothing has been painted since.
    COLORREF shownColor = CLR_INVALID;  ///< The last colour of the background that was painted.
    HWND focus = nullptr;  ///< What has the keyboard when the form is the active window again.
    std::unique_ptr<OthersDisabled> modal;
    std::vector<MemberPeer*> members;
};

FormPeer* PeerOf(const Form& form);
ControlPeer* PeerOf(const Control& control);

/// The form whose window this is, or null.
FormPeer* FormPeerOfWindow(HWND window);
/// The form that holds the window, or whose window it is; null for none.
FormPeer* FormPeerAround(HWND window);
/// The control whose window this is, or null.
Control* ControlOfWindow(HWND window);

/// All forms with windows, in the order in which they were loaded.
const std::vector<FormPeer*>& LoadedForms();

/// The window that a message box belongs to; null when no form is visible.
HWND OwnerForBox();

}  // namespace swiftpatch
