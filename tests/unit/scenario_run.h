#pragma once

#include <functional>
#include <map>
#include <string>

#include "scenarios/content.h"
#include "scenarios/table.h"
#include "unit/check_support.h"

namespace swiftpatch {

/// The bytes that a row means by "3.0.12.5", "letters 10", "first 100 of 3.0.12.5", ...
std::string ScenarioContent(const std::string& description);

/// A row of the scenario table, run on the scripted machine.
class ScenarioRun : public ProgramTest {
public:
    ScenarioRun(const scenarios::Table& table, const scenarios::Row& row)
        : table_(table), row_(row) {}

private:
    using Action = void (ScenarioRun::*)(const std::string&);

    static const std::map<std::string, Action>& Actions();
    void TestBody() override;
    void Do(const scenarios::Line& line);

    // What is there before the program starts.
    void Offers(const std::string& version) { offered_ = version; }
    void Installed(const std::string& version);
    void Staged(const std::string& versionAndTime);
    void Animation(const std::string& state);
    void Settings(const std::string& contents);
    void Keys(const std::string& names);
    void PlaceFile(const std::string& nameAndContent);
    void SetClock(const std::string& time);
    void SetZone(const std::string& minutes) { world.utcOffsetMinutes = std::stoi(minutes); }
    void Connection(const std::string& kind);
    void Patience(const std::string&) { endless_ = true; }

    // The server.
    void PrepareServer();
    static std::string Url(const std::string& method, const std::string& name);
    std::string UsualBody(const std::string& name) const;
    headless::Reply ReplyTo(const std::string& name, const scenarios::Answer& answer) const;

    // What the user sees and does. Boxes and dialogs are answered from inside the program.
    void ScriptUser();
    static std::string WithNames(std::string text);

    bool PumpUntil(const std::function<bool()>& condition);

    struct Part {
        Control* control;
        Property<std::string>* text;
    };
    Part PartOf(const std::string& name);
    void CheckBox(const std::string& nameAndAnswer);
    void Pass(const std::string&) {}
    void SeeText(const std::string& controlAndText);
    void SeeCaption(const std::string& text);
    void SeeControl(const std::string& name);
    void SeeHidden(const std::string& name);
    void SeeReport(const std::string& text);
    void Press(const std::string& name);
    void Untick(const std::string&);
    void SwitchOff(const std::string& seconds);
    void AwaitEnd(const std::string&);

    // What must be true at the end.
    std::map<std::string, std::string> Files();
    void CheckRequests(const std::string& requests);
    void CheckFiles(const std::string& differences);
    void CheckContent(const std::string& nameAndContent);
    void CheckStarted(const std::string& yesOrNo);
    void CheckTime(const std::string& limits);
    void CheckYields(const std::string& count);

    const scenarios::Table& table_;
    const scenarios::Row& row_;
    std::string offered_ = "3.0.12.5";
    bool endless_ = false;
    std::int64_t pumps_ = 0;
    std::int64_t seconds_ = 0;
    std::map<std::string, std::string> before_;
};

}  // namespace swiftpatch
