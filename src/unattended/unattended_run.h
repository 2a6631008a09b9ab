#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "runtime/console/attendant.h"
#include "unattended/command_line.h"
#include "unattended/ending.h"
#include "unattended/known_questions.h"
#include "unattended/reporter.h"

namespace swiftpatch {

class frmSwiftPatch;

/// The person of a run that nobody watches: looks at the window's controls, answers what is asked,
/// presses Install once it is offered, closes the window when nothing goes on by itself. A build
/// that somebody has gone back from is not pressed Install for.
///
/// The way back needs no check: that never begins, and the button is pressed in its place.
///
/// A check changes nothing: what the program deletes counts as gone from then on and stays on the
/// disk, and the run ends where it would fetch the build.
class UnattendedRun final : public Attendant {
public:
    UnattendedRun(const CommandLine& line, Reporter& reporter);

    void Loads(const Form& form) override;
    void Saw(const Component& component, PropertyId id) override;
    MsgBoxAnswer Answer(const Question& question) override;
    bool Rest() override;
    void Look() override;
    bool MaySend(WindowHandle window) override;
    void Sent(WindowHandle window, bool answered) override;
    bool MayDelete(const std::string& path) override;
    bool IsThere(const std::string& path, bool found) override;
    bool MayRequest(const std::string& url, const std::string& verb) override;

    /// Once the run has ended.
    ExitStatus Status();

private:
    /// A file's length and time, or nothing where it is missing.
    using FileState = std::optional<std::pair<std::int32_t, std::int64_t>>;

    static FileState StateOf(const std::string& path);
    MsgBoxAnswer AnswerTo(const Question& question, const Judgement& judgement);
    void Fail(const Judgement& judgement);
    bool ProgramMayBeClosed() const;
    static bool OffersUpdate(const frmSwiftPatch& window);
    void GoBack(frmSwiftPatch& window);
    void Leave(frmSwiftPatch& window);
    void SawText(const std::string& part, const std::string& text);
    void Progressed();

    const CommandLine line_;
    Reporter& reporter_;
    const FileState before_;
    Ending ending_;
    bool pressed_ = false;    ///< Install, or the button of the way back.
    bool goingBack_ = false;  ///< There is a build to go back to.
    bool closing_ = false;    ///< The main program has been told to close, and may come again.
    WindowHandle told_ = 0;   ///< The last window that was.
    std::set<std::string> gone_;
    std::int32_t percent_ = 0;
    std::uint32_t lastProgress_;
    std::uint32_t lastLine_;
};

}  // namespace swiftpatch
