#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "e2e/controls.h"
#include "e2e/process.h"
#include "e2e/wait.h"
#include "e2e/window_view.h"

namespace swiftpatch::e2e {

/// A run of the updater, seen and used as a person does: by its windows. Whatever is awaited in
/// vain throws DriveError, which says what the program shows instead.
class Updater {
public:
    explicit Updater(const std::filesystem::path& program, const std::string& httpProxy = {})
        : process_(program, {}, httpProxy) {}
    /// Takes over an updater that runs already.
    explicit Updater(DWORD process) : process_(process) {}

    const Process& Running() const { return process_; }

    /// The visible window of a class; null when there is none.
    HWND Window(const wchar_t* form) const;
    HWND AwaitWindow(const wchar_t* form, milliseconds limit) const;
    void AwaitNoWindow(const wchar_t* form, milliseconds limit) const;
    std::string Caption(const wchar_t* form) const;

    std::string Text(const Control& control) const;
    bool Visible(const Control& control) const;
    bool Enabled(const Control& control) const;
    bool Checked(const Control& control) const;
    /// The position of a progress bar.
    int Progress(const Control& control) const;

    /// Waits for a text. A message box that comes up meanwhile ends the wait at once, because
    /// nobody would answer it.
    void AwaitText(const Control& control, const std::string& text, milliseconds limit) const;
    void AwaitEnabled(const Control& control, milliseconds limit) const;

    /// Clicks on a button that can be pressed.
    void Press(const Control& control) const;
    /// Closes a window as the user does who presses the X in its corner.
    void CloseByCorner(const wchar_t* form) const;
    /// Tells every window of the program to close, hidden ones too, as tools do that end tasks.
    void CloseAllWindows() const;

    std::optional<Box> MessageBoxNow() const;
    Box AwaitMessageBox(milliseconds limit) const;
    /// Presses one of the box's buttons (IDOK, IDYES, IDNO) and waits until the box is gone.
    void Answer(const Box& box, int button) const;

    void AwaitEnd(milliseconds limit) const;

    /// What is on the screen at the moment, for the message of a failure.
    std::string Describe() const;

private:
    HWND Find(const Control& control) const;

    Process process_;
};

}  // namespace swiftpatch::e2e
