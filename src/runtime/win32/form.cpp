#include "runtime/form.h"

#include "runtime/runtime_error.h"
#include "runtime/win32/control_windows.h"
#include "runtime/win32/fonts.h"
#include "runtime/win32/painting.h"
#include "runtime/win32/peer.h"
#include "runtime/win32/pump.h"
#include "runtime/win32/window_procedure.h"

namespace swiftpatch {
namespace {

/// The number of the program's icon among its resources.
constexpr WORD kProgramIcon = 1;

HICON ProgramIcon(int widthMetric, int heightMetric) {
    return static_cast<HICON>(
        ::LoadImageA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(kProgramIcon), IMAGE_ICON,
                     ::GetSystemMetrics(widthMetric), ::GetSystemMetrics(heightMetric), 0));
}

/// Each form's name is a window class of its own. A second registration fails and does no harm.
void RegisterFormClass(const std::string& name) {
    // Loaded once, but not as icons that the system shares: an old system knows a shared icon by
    // its number alone and would hand out the large one for the small one.
    static const HICON icon = ProgramIcon(SM_CXICON, SM_CYICON);
    static const HICON smallIcon = ProgramIcon(SM_CXSMICON, SM_CYSMICON);
    WNDCLASSEXA form{};
    form.cbSize = sizeof(form);
    form.style = CS_DBLCLKS;
    form.lpfnWndProc = FormProcedure;
    form.hInstance = ::GetModuleHandleA(nullptr);
    form.hIcon = icon;
    form.hIconSm = smallIcon;
    form.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
    form.lpszClassName = name.c_str();
    ::RegisterClassExA(&form);
}

struct FormStyle {
    DWORD style;
    DWORD extendedStyle;
};

FormStyle StyleOf(BorderStyle border) {
    switch (border) {
        case BorderStyle::kNone:
            return {WS_POPUP | WS_CLIPCHILDREN, WS_EX_APPWINDOW};
        case BorderStyle::kFixedDialog:
            return {WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN, WS_EX_DLGMODALFRAME};
        case BorderStyle::kSizable:
            return {WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0};
        case BorderStyle::kFixedSingle:
        default:
            return {WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN, 0};
    }
}

SIZE OuterSize(const FormDesign& design, const FormStyle& style, HFONT font) {
    RECT outer = ToPixels({0, 0, design.width, design.height}, BaseUnits(font));
    ::AdjustWindowRectEx(&outer, style.style, FALSE, style.extendedStyle);
    return {outer.right - outer.left, outer.bottom - outer.top};
}

void Move(HWND window, int left, int top) {
    ::SetWindowPos(window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT WorkArea() {
    RECT area;
    if (!::SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0)) {
        area = {0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
    }
    return area;
}

void CenterIn(const RECT& area, HWND window) {
    RECT place;
    ::GetWindowRect(window, &place);
    const LONG left = area.left + (area.right - area.left - (place.right - place.left)) / 2;
    const LONG top = area.top + (area.bottom - area.top - (place.bottom - place.top)) / 2;
    Move(window, left, top);
}

/// Enables the forms again that a modal form had disabled. That comes before the form disappears:
/// otherwise the system would make another program's window the active one.
void EndModal(FormPeer& peer) {
    if (peer.modal) {
        peer.modal.reset();
        ::SetWindowLongA(peer.window, GWL_HWNDPARENT, 0);
    }
}

void BecomeModal(FormPeer& peer) {
    const HWND owner = OwnerForBox();
    if (owner != nullptr && owner != peer.window) {
        ::SetWindowLongA(peer.window, GWL_HWNDPARENT, reinterpret_cast<LONG>(owner));
        const bool topmost = (::GetWindowLongA(owner, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
        ::SetWindowPos(peer.window, topmost ? HWND_TOPMOST : HWND_TOP, 0, 0, 0, 0,
                       SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    peer.modal = std::make_unique<OthersDisabled>(peer.window);
}

}  // namespace

void Form::CreateWindows() {
    RegisterFormClass(Name());
    UniqueFont font = MakeFont({}, 0);
    const FormStyle style = StyleOf(design_.border);
    const SIZE size = OuterSize(design_, style, font.Get());
    const HWND window = ::CreateWindowExA(
        style.extendedStyle, Name().c_str(), Caption.Get().c_str(), style.style, CW_USEDEFAULT,
        CW_USEDEFAULT, size.cx, size.cy, nullptr, nullptr, ::GetModuleHandleA(nullptr), nullptr);
    if (window == nullptr) {
        throw RuntimeError(error_number::kInvalidProcedureCall);
    }
    auto* const own = new FormPeer(*this, std::move(font), window);
    AttachPeer(own);
    CreateControlWindows(*own);
    for (Timer* timer : timers_) {
        timer->AttachPeer(new TimerPeer(*own, *timer));
    }
    if (design_.centered) {
        CenterIn(WorkArea(), window);
    }
}

void Form::ShowWindows() {
    if (const FormPeer* const own = PeerOf(*this)) {
        ::ShowWindow(own->window, SW_SHOW);
    }
}

void Form::HideWindows() {
    if (FormPeer* const own = PeerOf(*this)) {
        EndModal(*own);
        ::ShowWindow(own->window, SW_HIDE);
    }
}

void Form::DestroyWindows() {
    FormPeer* const own = PeerOf(*this);
    if (own == nullptr) {
        return;
    }
    if (own->window != nullptr) {
        const HWND window = own->window;
        EndModal(*own);
        ::ShowWindow(window, SW_HIDE);
        own->Leave();
        DestroyLater(window);
    }
    AttachPeer(nullptr);
}

void Form::RunModal() {
    BecomeModal(*PeerOf(*this));
    ShowWindows();
    while (visible_) {
        PumpWaiting();
    }
}

void Form::PaintingChanged() {
    if (FormPeer* const own = PeerOf(*this)) {
        BackgroundChanged(*own);
    }
}

WindowHandle Form::WindowOfForm() const {
    const FormPeer* const own = PeerOf(*this);
    return own == nullptr ? 0 : reinterpret_cast<LONG_PTR>(own->window);
}

PixelSize Form::ScreenSize() {
    return {::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
}

PixelSize Form::WindowSize() const {
    RECT place{};
    if (const FormPeer* const own = PeerOf(*this)) {
        ::GetWindowRect(own->window, &place);
    }
    return {static_cast<int>(place.right - place.left), static_cast<int>(place.bottom - place.top)};
}

void Form::MoveWindow(int left, int top) {
    if (const FormPeer* const own = PeerOf(*this)) {
        Move(own->window, left, top);
    }
}

}  // namespace swiftpatch
