#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "runtime/component.h"
#include "runtime/controls.h"

namespace swiftpatch {

/// A window of any program, as the system numbers it (HWND, 32 bits). 0 is no window.
using WindowHandle = std::int32_t;

enum class MousePointer { kDefault = 0, kHourglass = 11 };
enum class BorderStyle { kNone, kFixedSingle, kFixedDialog, kSizable };

/// What a form's button on the task bar shows in place of a percentage.
namespace taskbar {
inline constexpr std::int32_t kNothing = -1;
inline constexpr std::int32_t kFailure = -2;
}  // namespace taskbar

/// A size on the screen.
struct PixelSize {
    int width = 0;
    int height = 0;
};

/// What a form is made of; fixed at design time. The form's name is its window class.
struct FormDesign {
    std::string caption;
    int width = 0;   ///< Of the client area, in dialog units.
    int height = 0;  ///< Of the client area, in dialog units.
    BorderStyle border = BorderStyle::kFixedSingle;
    bool centered = true;        ///< Opens in the middle of the screen's work area.
    bool unloadEndsRun = false;  ///< The run is over once this form has been unloaded.
};

/// A filled rectangle painted on a form's background, in the form's scale.
struct PaintedBox {
    int left;
    int top;
    int right;
    int bottom;
    Color color;
};

/// A window of the program. Its event procedures are the virtual functions Form_xxx.
///
/// A form is loaded at its first Show: its windows are created hidden, Form_Load runs, then it
/// is shown. (Asking for its Handle loads it as well.) It is unloaded by Unload or by any way in
/// which a user or the system closes a window (WM_CLOSE, WM_QUERYENDSESSION): Form_QueryUnload may
/// refuse; otherwise Form_Unload runs and the windows are destroyed.
class Form : public Component {
public:
    virtual ~Form();

    Property<std::string> Caption;
    Property<Color> BackColor;
    Property<MousePointer> Pointer;
    /// How far the work is, for the form's button on the task bar where the system shows that:
    /// 0 to 100, or one of taskbar's values.
    Property<std::int32_t> TaskbarProgress;

    /// Shows the form without blocking. May pump, as Form_Load may.
    void Show();
    /// Shows the form, disables the program's other windows, and returns once the form has been
    /// hidden or unloaded. Pumps.
    void ShowModal();
    void Hide();
    /// Closes the form unless Form_QueryUnload refuses. May pump, as the event procedures may.
    void Unload();

    /// The two halves of Unload, for a system that asks first and ends later (a session's end).
    /// QueryUnload is true when the form may go; false too while it is being asked already.
    bool QueryUnload();
    void UnloadUnasked();

    bool Loaded() const { return loaded_; }
    bool Visible() const { return visible_; }
    /// Loads the form, if need be without showing it, and returns its window.
    WindowHandle Handle();

    /// Puts the form in the middle of the screen, whatever else covers a part of that.
    void CenterOnScreen();

    /// Units of the painted background: the client area is this many units high and its width
    /// counts in pixels, until another height is set.
    void SetScaleHeight(int units);
    /// Removes what was painted on the background.
    void ClearPainting();
    /// Adds a box to the painted background. It stays until ClearPainting.
    void PaintBox(const PaintedBox& box);

    const FormDesign& Design() const { return design_; }
    int ScaleHeight() const { return scaleHeight_; }
    const std::vector<PaintedBox>& Painting() const { return painting_; }
    /// Controls in the order in which the Tab key visits them.
    const std::vector<Control*>& Controls() const { return controls_; }
    const std::vector<Timer*>& Timers() const { return timers_; }

    virtual void Form_Load() {}
    virtual void Form_QueryUnload(bool& /*cancel*/) {}
    virtual void Form_Unload() {}

protected:
    Form(std::string name, FormDesign design);

    /// Puts the given controls first in the order of the Tab key.
    void SetTabOrder(const std::vector<Control*>& first);

private:
    friend class Control;
    friend class Timer;

    void EnsureLoaded();

    // The platform's part. None of these runs an event procedure, and only RunModal pumps.
    void CreateWindows();
    void ShowWindows();
    void HideWindows();
    void DestroyWindows();
    void RunModal();  ///< Returns once the form is no longer visible.
    void PaintingChanged();
    WindowHandle WindowOfForm() const;
    static PixelSize ScreenSize();
    PixelSize WindowSize() const;
    void MoveWindow(int left, int top);

    FormDesign design_;
    std::vector<Control*> controls_;
    std::vector<Timer*> timers_;
    std::vector<PaintedBox> painting_;
    int scaleHeight_ = 0;
    bool loaded_ = false;
    bool unloading_ = false;
    bool visible_ = false;
};

/// Hands a form over to be deleted once no event procedure of any form is on the stack.
void DeleteLater(std::unique_ptr<Form> form);

/// Deletes the forms that were handed over. Called by the platform's outermost loop.
void DeleteForms();

/// The one instance of a form class: created on first use, released when it unloads.
template <class F>
class FormInstance {
public:
    F& Get() {
        if (!form_) {
            form_ = std::make_unique<F>();
        }
        return *form_;
    }
    bool Exists() const { return form_ != nullptr; }
    /// Safe inside the form's own event procedures.
    void Release() { DeleteLater(std::move(form_)); }

private:
    std::unique_ptr<F> form_;
};

}  // namespace swiftpatch
