#include "runtime/win32/peer.h"

#include <algorithm>

#include "runtime/win32/fonts.h"
#include "runtime/win32/window_procedure.h"

// A peer ties a component of the program to its window. Three lives meet here, and each can be the
// first to end: the component is the program's (a control is a member of its form), the peer is the
// component's, and the window is the system's, which destroys a control's window with its form's.
//
// So no peer owns its window. Leave cuts the tie from the window's side: a control's window gets
// the procedure of its class back and forgets the peer, and the peer's `window` is null from then
// on, which whoever uses it looks for first. The destructors cut the tie from the component's side.
// The window of a form that goes is hidden and cut off at once but destroyed later (DestroyLater),
// because the form may be going inside one of that window's own messages.
//
// The way back, from a window to its peer: a form is looked for in the list of all forms that have
// windows, so that another program's window, or one that has gone, finds nothing; a control is
// known by its procedure, which no other window has. All of it happens on the user-interface
// thread.

namespace swiftpatch {
namespace {

/// Never destroyed: forms that live as long as the program would be destroyed after it.
std::vector<FormPeer*>& Forms() {
    static auto& forms = *new std::vector<FormPeer*>;
    return forms;
}

template <class T>
void Remove(std::vector<T*>& from, const T* what) {
    from.erase(std::remove(from.begin(), from.end(), what), from.end());
}

void Remember(HWND window, const void* what) {
    ::SetWindowLongA(window, GWL_USERDATA, reinterpret_cast<LONG>(what));
}

WNDPROC SetProcedure(HWND window, WNDPROC procedure) {
    return reinterpret_cast<WNDPROC>(
        ::SetWindowLongA(window, GWL_WNDPROC, reinterpret_cast<LONG>(procedure)));
}

WNDPROC ProcedureOf(HWND window) {
    return reinterpret_cast<WNDPROC>(::GetWindowLongA(window, GWL_WNDPROC));
}

}  // namespace

void PeerDeleter::operator()(Peer* peer) const { delete peer; }

MemberPeer::MemberPeer(FormPeer& itsForm, HWND itsWindow) : Peer(itsWindow), form(&itsForm) {
    itsForm.members.push_back(this);
}

MemberPeer::~MemberPeer() {
    if (form != nullptr) {
        Remove<MemberPeer>(form->members, this);
    }
}

void MemberPeer::Leave() {
    form = nullptr;
    window = nullptr;
}

ControlPeer::ControlPeer(FormPeer& itsForm, Control& itsControl, HWND itsWindow)
    : MemberPeer(itsForm, itsWindow), control(itsControl), original(ProcedureOf(itsWindow)) {
    Remember(window, this);
    SetProcedure(window, ControlProcedure);
}

ControlPeer::~ControlPeer() {
    if (window != nullptr) {
        SetProcedure(window, original);
        Remember(window, nullptr);
    }
}

void ControlPeer::Leave() {
    SetProcedure(window, original);
    Remember(window, nullptr);
    MemberPeer::Leave();
}

TimerPeer::TimerPeer(FormPeer& itsForm, Timer& itsTimer)
    : MemberPeer(itsForm, itsForm.window), timer(itsTimer) {
    Follow();
}

TimerPeer::~TimerPeer() {
    if (window != nullptr) {
        ::KillTimer(window, static_cast<UINT_PTR>(timer.Id()));
    }
}

void TimerPeer::Leave() {
    ::KillTimer(window, static_cast<UINT_PTR>(timer.Id()));
    MemberPeer::Leave();
}

void TimerPeer::Follow() {
    const auto id = static_cast<UINT_PTR>(timer.Id());
    if (timer.Enabled && timer.Interval.Get() > 0) {
        ::SetTimer(window, id, static_cast<UINT>(timer.Interval.Get()), nullptr);
    } else {
        ::KillTimer(window, id);
    }
}

OthersDisabled::OthersDisabled(HWND exceptThis) {
    for (const FormPeer* each : Forms()) {
        if (each->window != exceptThis && ::IsWindowEnabled(each->window)) {
            windows_.push_back(each->window);
            ::EnableWindow(each->window, FALSE);
        }
    }
}

OthersDisabled::~OthersDisabled() {
    for (const HWND window : windows_) {
        if (FormPeerOfWindow(window) != nullptr) {
            ::EnableWindow(window, TRUE);
        }
    }
}

FormPeer::FormPeer(Form& itsForm, UniqueFont itsFont, HWND itsWindow)
    : Peer(itsWindow), form(itsForm), font(std::move(itsFont)), baseUnits(BaseUnits(font.Get())) {
    Remember(window, this);
    Forms().push_back(this);
}

FormPeer::~FormPeer() { Leave(); }

void FormPeer::Leave() {
    Remove<FormPeer>(Forms(), this);
    for (MemberPeer* member : members) {
        member->Leave();
    }
    members.clear();
    if (window != nullptr) {
        Remember(window, nullptr);
        window = nullptr;
    }
}

FormPeer* PeerOf(const Form& form) { return static_cast<FormPeer*>(form.peer()); }

ControlPeer* PeerOf(const Control& control) { return static_cast<ControlPeer*>(control.peer()); }

FormPeer* FormPeerOfWindow(HWND window) {
    const auto found = std::find_if(Forms().begin(), Forms().end(), [window](const FormPeer* each) {
        return each->window == window;
    });
    return found == Forms().end() ? nullptr : *found;
}

FormPeer* FormPeerAround(HWND window) {
    while (window != nullptr) {
        if (FormPeer* const form = FormPeerOfWindow(window)) {
            return form;
        }
        const bool child = (::GetWindowLongA(window, GWL_STYLE) & WS_CHILD) != 0;
        window = child ? ::GetParent(window) : nullptr;
    }
    return nullptr;
}

Control* ControlOfWindow(HWND window) {
    const bool ours = window != nullptr && ProcedureOf(window) == ControlProcedure;
    return ours ? &reinterpret_cast<ControlPeer*>(::GetWindowLongA(window, GWL_USERDATA))->control
                : nullptr;
}

const std::vector<FormPeer*>& LoadedForms() { return Forms(); }

HWND OwnerForBox() {
    const FormPeer* owner = FormPeerAround(::GetActiveWindow());
    if (owner == nullptr || !owner->form.Visible()) {
        const auto shown = std::find_if(Forms().rbegin(), Forms().rend(),
                                        [](const FormPeer* each) { return each->form.Visible(); });
        owner = shown == Forms().rend() ? nullptr : *shown;
    }
    if (owner == nullptr) {
        return nullptr;
    }
    const HWND popup = ::GetLastActivePopup(owner->window);
    return ::IsWindowVisible(popup) ? popup : owner->window;
}

}  // namespace swiftpatch
