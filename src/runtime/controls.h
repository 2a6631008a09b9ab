#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "runtime/component.h"

namespace swiftpatch {

class Form;

/// A colour: 0x00BBGGRR, or 0x80000000 plus the index of a system colour (the system's
/// COLORREF and COLOR_xxx numbers).
enum class Color : std::uint32_t {
    kBlack = 0x00000000U,
    kWhite = 0x00FFFFFFU,
    kButtonFace = 0x8000000FU,  ///< COLOR_BTNFACE, index 15
    kButtonText = 0x80000012U,  ///< COLOR_BTNTEXT, index 18
    kWindow = 0x80000005U,      ///< COLOR_WINDOW, index 5
};

/// Grey of a level from 0 (black) to 255 (white); other levels raise error 5.
Color Grey(int level);
Color Rgb(int red, int green, int blue);

enum class BackStyle { kTransparent = 0, kOpaque = 1 };
enum class CheckState { kUnchecked = 0, kChecked = 1, kGrayed = 2 };

/// Place on the form, or in the frame that holds the control, in dialog units of the form's font
/// (the system's DLU: a quarter of the average character's width, an eighth of its height), so
/// that no text is ever cut off when the font or the resolution changes.
struct Rect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

/// What a label, box or button looks like beyond its properties; fixed at design time.
struct Look {
    bool bold = false;
    bool fixedPitch = false;  ///< A font whose characters are all equally wide.
    bool centered = false;
    bool mnemonics = false;  ///< Labels: "&&" is shown as "&"; otherwise text shows as it stands.
    bool multiLine = false;  ///< Text boxes: several lines, read-only, both scroll bars.
};

/// A timer: raises Elapsed every Interval milliseconds while Enabled. A notification that was
/// under way when the timer was switched off is dropped.
class Timer : public Component {
public:
    Timer(Form& form, int id, std::string name);

    Property<bool> Enabled;
    Property<std::int32_t> Interval;  ///< Milliseconds.
    std::function<void()> Elapsed;

    int Id() const { return id_; }
    /// The platform's notification. May pump, as the event procedure may.
    void RaiseElapsed();

private:
    int id_;
};

class Frame;

/// A visible part of a form; a real child window with the control id it is made with.
class Control : public Component {
public:
    Property<bool> Visible;
    Property<bool> Enabled;

    int Id() const { return id_; }
    /// The frame that holds the control, or null when the form does.
    Frame* Container() const { return container_; }

    void Place(Rect place, Look look = {});
    const Rect& Position() const { return place_; }
    const Look& DesignLook() const { return look_; }

    /// What a screen reader calls a control that has no caption; fixed at design time.
    const char* AccessibleName = nullptr;

    /// Repaints at once. Does not pump.
    void Refresh();

    /// Puts the keyboard focus on the control: at once while its form is the active window, else
    /// when that becomes active again. Never takes the keyboard from another window. Does not pump.
    void SetFocus();

protected:
    Control(Form& form, int id, std::string name, ComponentKind kind, Frame* container);
    ~Control() = default;

private:
    int id_;
    Frame* container_;
    Rect place_;
    Look look_;
};

class Label : public Control {
public:
    Label(Form& form, int id, std::string name, Frame* container = nullptr);

    Property<std::string> Caption;
    Property<Color> BackColor;
    Property<Color> ForeColor;
    Property<BackStyle> Background;
    Property<std::int32_t> FontSize;  ///< Points; 0 is the size of the system's dialog font.
};

class TextBox : public Control {
public:
    TextBox(Form& form, int id, std::string name);

    /// Shown from its end where the platform's box cannot hold all of it.
    Property<std::string> Text;
};

class CommandButton : public Control {
public:
    CommandButton(Form& form, int id, std::string name);

    Property<std::string> Caption;
    std::function<void()> Click;
    bool Default = false;  ///< Pressed by the Enter key where no other button has the focus.
    bool Cancel = false;   ///< Pressed by the Esc key.

    /// The platform's notification; ignored while the button is hidden or disabled, because a
    /// click can be under way when the button goes. May pump, as the event procedure may.
    void RaiseClick();
};

class CheckBox : public Control {
public:
    CheckBox(Form& form, int id, std::string name);

    Property<std::string> Caption;
    Property<CheckState> Value;

    /// The platform's notification that the user pressed it: checked becomes unchecked and the
    /// other way round; the platform follows through PropertySet.
    void RaisePressed();
};

class ProgressBar : public Control {
public:
    ProgressBar(Form& form, int id, std::string name);

    Property<std::int32_t> Min;
    Property<std::int32_t> Max;
    Property<std::int32_t> Value;
};

class Frame : public Control {
public:
    Frame(Form& form, int id, std::string name);

    Property<std::string> Caption;
};

/// Plays an uncompressed AVI file without sound, over and over while it auto-plays.
class Animation : public Control {
public:
    Animation(Form& form, int id, std::string name, Frame* container);

    Property<bool> AutoPlay;

    /// Opens the file at `path`; a file that is no playable AVI leaves the control empty.
    void Open(const std::string& path);
    /// Stops playing and lets go of the file.
    void Stop();
};

/// A list with columns.
class ListView : public Control {
public:
    ListView(Form& form, int id, std::string name);

    std::vector<std::string> Columns;  ///< Headings, fixed at design time.
};

/// A picture from the program's resources (RCDATA holding a JPEG, RFC 2046 image/jpeg).
class Image : public Control {
public:
    Image(Form& form, int id, std::string name);

    int ResourceId = 0;  ///< Fixed at design time.
};

}  // namespace swiftpatch
