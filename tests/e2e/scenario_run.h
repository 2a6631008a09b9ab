#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "e2e/held_file.h"
#include "e2e/read_only_folder.h"
#include "e2e/screenshot.h"
#include "e2e/tls_front.h"
#include "e2e/update_run.h"
#include "scenarios/content.h"
#include "scenarios/table.h"

namespace swiftpatch::e2e {

/// A row of the scenario table, run on the real updater.
class ScenarioRun : public UpdateRun {
public:
    ScenarioRun(const scenarios::Table& table, const scenarios::Row& row)
        : table_(table), row_(row) {}

protected:
    using Line = scenarios::Line;

    void TestBody() override;
    /// Puts into the folder and onto the server what the row says; false where the row cannot be
    /// run here.
    bool Prepare();
    /// Lets go of what the row keeps from the program.
    void LetGo();
    /// Does what a line says; a failure in it is reported with the line's place.
    void Do(const Line& line) { Do(line, Actions()); }
    std::string WithNames(std::string text);

    const scenarios::Table& table_;
    const scenarios::Row& row_;

private:
    using Action = void (ScenarioRun::*)(const std::string&);
    /// The method and the name of the file that a request is about.
    using RequestKind = std::pair<std::string, std::string>;

    virtual void Play();
    void Do(const Line& line, const std::map<std::string, Action>& actions);
    static const std::map<std::string, Action>& Actions();

    // What is there before the program starts.
    void Offers(const std::string& version) { offered_ = version; }
    void Installed(const std::string& version);
    void Staged(const std::string& versionAndTime);
    void Animation(const std::string& state);
    void Settings(const std::string& contents);
    void SpeakHttps(const std::string& certificate);
    void Keys(const std::string& names);
    void PlaceFile(const std::string& nameAndContent);
    void PlaceFolder(const std::string& name);
    void Hold(const std::string& name);
    void Lock(const std::string&);
    void RunElsewhere(const std::string& arguments);
    void Record(const std::string&) { LetMainProgramRecord(); }

    // The server.
    void PrepareServer();
    std::string SignaturesOf(const std::vector<scenarios::Signature>& signatures) const;
    Reply UsualReply(const std::string& name) const;
    Reply ReplyOf(const scenarios::Script& script);
    void Apply(const scenarios::Answer& answer, Reply& reply);
    void SayInTurns(const RequestKind& kind, const std::vector<const scenarios::Script*>& scripts);
    HttpServer& ServerOf(const std::string& name);

    // What the user sees and does.
    void SeeBox(const std::string& nameAndAnswer);
    void SeeFailure(const std::string& name);
    void SeeText(const std::string& controlAndText);
    void SeeCaption(const std::string& text);
    void SeeControl(const std::string& control);
    void SeeHidden(const std::string& control);
    void SeeReport(const std::string& text);
    void SeePercentage(const std::string& number);
    void PressButton(const std::string& control);
    void Untick(const std::string&);
    void CloseByCorner(const std::string&);
    void AwaitRequests(const std::string& count);
    void ChangeFile(const std::string& nameAndContent);
    void AwaitEnd(const std::string&);

    // What must be true at the end.
    void CheckRequests(const std::string& requests);
    void CheckFiles(const std::string& differences);
    void CheckContent(const std::string& nameAndContent);
    void CheckStarted(const std::string& yesOrNo);

    std::string Content(const std::string& description) const;
    /// The server folder as the data file names it.
    std::string NamedFolder() const;
    std::vector<std::string> RequestsSeen() const;
    void KeepPicture();

    std::string offered_ = "3.0.12.5";
    bool signed_ = false;
    HttpServer other_{2};
    std::optional<DeadPort> nobody_;
    std::optional<TlsFront> named_;   ///< What the data file names, in a row about https.
    std::optional<TlsFront> secure_;  ///< What a row calls {secure}.
    std::vector<std::unique_ptr<HeldFile>> held_;
    std::unique_ptr<ReadOnlyFolder> locked_;
    std::unique_ptr<AppFolder> elsewhere_;
    std::unique_ptr<MainProgram> running_;
    std::unique_ptr<ScreenPicture> picture_;  ///< The last one before a step that ends something.
};

/// The tables that the options name.
const scenarios::Table& ScenarioTable();

/// Makes a test of every row that runs on the real program.
void RegisterScenarios();

}  // namespace swiftpatch::e2e
