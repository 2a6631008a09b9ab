#include "runtime/win32/control_windows.h"

#include "runtime/runtime_error.h"
#include "runtime/win32/accessibility.h"
#include "runtime/win32/fonts.h"
#include "runtime/win32/picture.h"

namespace swiftpatch {
namespace {

/// How a kind of control is made.
struct WindowKind {
    const char* windowClass;
    DWORD style;
    DWORD extendedStyle;
};

DWORD ButtonStyle(const CommandButton& button) {
    return static_cast<DWORD>(button.Default ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON);
}

DWORD TextBoxStyle(const Look& look) {
    constexpr DWORD kLines = ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | WS_VSCROLL | WS_HSCROLL;
    return ES_AUTOHSCROLL | (look.multiLine ? kLines : 0U);
}

WindowKind KindOf(const Control& control) {
    switch (control.Kind()) {
        case ComponentKind::kTextBox:
            return {"EDIT", WS_TABSTOP | TextBoxStyle(control.DesignLook()), WS_EX_CLIENTEDGE};
        case ComponentKind::kCommandButton:
            return {"BUTTON", WS_TABSTOP | ButtonStyle(static_cast<const CommandButton&>(control)),
                    0};
        case ComponentKind::kCheckBox:
            return {"BUTTON", WS_TABSTOP | BS_CHECKBOX, 0};
        case ComponentKind::kProgressBar:
            return {PROGRESS_CLASSA, 0, 0};
        case ComponentKind::kFrame:
            return {"BUTTON", BS_GROUPBOX | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT};
        case ComponentKind::kAnimation:
            // Played by a timer, so that the control starts no thread.
            return {ANIMATE_CLASSA, ACS_CENTER | ACS_TRANSPARENT | ACS_TIMER, 0};
        case ComponentKind::kListView:
            return {WC_LISTVIEWA, WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_NOSORTHEADER,
                    WS_EX_CLIENTEDGE};
        case ComponentKind::kLabel:
        default:
            return {"STATIC", SS_NOPREFIX, 0};
    }
}

std::string CaptionOf(const Control& control) {
    switch (control.Kind()) {
        case ComponentKind::kLabel:
            return static_cast<const Label&>(control).Caption;
        case ComponentKind::kTextBox:
            return static_cast<const TextBox&>(control).Text;
        case ComponentKind::kCommandButton:
            return static_cast<const CommandButton&>(control).Caption;
        case ComponentKind::kCheckBox:
            return static_cast<const CheckBox&>(control).Caption;
        case ComponentKind::kFrame:
            return static_cast<const Frame&>(control).Caption;
        default:
            return {};
    }
}

void AddColumns(HWND list, const std::vector<std::string>& headings) {
    RECT client;
    ::GetClientRect(list, &client);
    const int count = static_cast<int>(headings.size());
    for (int i = 0; i < count; ++i) {
        std::string heading = headings[static_cast<std::size_t>(i)];
        LVCOLUMNA column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.cx = static_cast<int>(client.right) / count;
        column.pszText = heading.data();
        ::SendMessageA(list, LVM_INSERTCOLUMNA, static_cast<WPARAM>(i),
                       reinterpret_cast<LPARAM>(&column));
    }
}

void SetUpProgressBar(HWND window, const ProgressBar& bar) {
    ::SendMessageA(window, PBM_SETRANGE32, static_cast<WPARAM>(bar.Min.Get()), bar.Max.Get());
    ::SendMessageA(window, PBM_SETPOS, static_cast<WPARAM>(bar.Value.Get()), 0);
}

void SetUp(ControlPeer& peer) {
    Control& control = peer.control;
    switch (control.Kind()) {
        case ComponentKind::kTextBox:
            ::SendMessageA(peer.window, EM_LIMITTEXT, 0, 0);  // As much as the system can hold.
            break;
        case ComponentKind::kCheckBox:
            ::SendMessageA(peer.window, BM_SETCHECK,
                           static_cast<WPARAM>(static_cast<CheckBox&>(control).Value.Get()), 0);
            break;
        case ComponentKind::kProgressBar:
            SetUpProgressBar(peer.window, static_cast<ProgressBar&>(control));
            break;
        case ComponentKind::kListView:
            AddColumns(peer.window, static_cast<ListView&>(control).Columns);
            break;
        case ComponentKind::kImage:
            peer.picture = LoadPicture(static_cast<Image&>(control).ResourceId);
            break;
        default:
            break;
    }
}

void CreateControlWindow(FormPeer& form, Control& control) {
    const Frame* const container = control.Container();
    const HWND parent = container == nullptr ? form.window : PeerOf(*container)->window;
    const RECT place = ToPixels(control.Position(), form.baseUnits);
    const WindowKind kind = KindOf(control);
    const DWORD state = (control.Visible ? WS_VISIBLE : 0U) | (control.Enabled ? 0U : WS_DISABLED);
    const HWND window =
        ::CreateWindowExA(kind.extendedStyle, kind.windowClass, CaptionOf(control).c_str(),
                          WS_CHILD | WS_CLIPSIBLINGS | kind.style | state, place.left, place.top,
                          place.right - place.left, place.bottom - place.top, parent,
                          reinterpret_cast<HMENU>(static_cast<INT_PTR>(control.Id())),
                          ::GetModuleHandleA(nullptr), nullptr);
    if (window == nullptr) {
        throw RuntimeError(error_number::kInvalidProcedureCall);
    }
    auto* const peer = new ControlPeer(form, control, window);
    control.AttachPeer(peer);
    if (control.Kind() == ComponentKind::kLabel) {
        // Later labels lie above earlier ones, and all of them above the rest.
        ::SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    ApplyFont(*peer);
    SetUp(*peer);
    NameForScreenReaders(*peer);
}

}  // namespace

void CreateControlWindows(FormPeer& form) {
    for (const bool inFrame : {false, true}) {
        for (Control* control : form.form.Controls()) {
            if ((control->Container() != nullptr) == inFrame) {
                CreateControlWindow(form, *control);
            }
        }
    }
}

void ApplyFont(ControlPeer& peer) {
    const Control& control = peer.control;
    const int points = control.Kind() == ComponentKind::kLabel
                           ? static_cast<const Label&>(control).FontSize.Get()
                           : 0;
    const Look& look = control.DesignLook();
    UniqueFont font;
    if (look.bold || look.fixedPitch || points > 0) {
        font = MakeFont(look, points);
    }
    const HFONT used = font ? font.Get() : peer.form->font.Get();
    ::SendMessageA(peer.window, WM_SETFONT, reinterpret_cast<WPARAM>(used), FALSE);
    peer.ownFont = std::move(font);
}

}  // namespace swiftpatch
