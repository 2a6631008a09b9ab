#include "unattended/known_questions.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <string>

#include "shared/branding.h"

namespace swiftpatch {
namespace {

constexpr const char* kFailureForm = "frmRunning";
constexpr const char* kAnyTitle = "";
constexpr const char* kAnyText = "";

/// Where the status is none, the number behind `part` says which.
struct KnownQuestion {
    const char* form;
    const char* title;
    const char* part;
    Meaning meaning;
    std::optional<ExitStatus> status;
};

constexpr std::array kQuestions{
    KnownQuestion{kFailureForm, "No Connection", kAnyText, Meaning::kFailure,
                  ExitStatus::kNoConnection},
    KnownQuestion{kFailureForm, "Bad Download Link", kAnyText, Meaning::kFailure,
                  ExitStatus::kBadServer},
    KnownQuestion{kFailureForm, "Incorrect Download Link", kAnyText, Meaning::kFailure,
                  ExitStatus::kBadServer},
    KnownQuestion{kFailureForm, "Error Downloading File", kAnyText, Meaning::kFailure,
                  ExitStatus::kBadServer},
    KnownQuestion{kFailureForm, "Internet Connection Timeout", "Error # ", Meaning::kFailure, {}},
    KnownQuestion{kFailureForm, "Program File Not Found", kAnyText, Meaning::kFailure,
                  ExitStatus::kDisk},
    KnownQuestion{kFailureForm, "Signature Missing", kAnyText, Meaning::kFailure,
                  ExitStatus::kNotSigned},
    KnownQuestion{kFailureForm, "Signature Invalid", kAnyText, Meaning::kFailure,
                  ExitStatus::kNotSigned},
    KnownQuestion{kFailureForm, "Signing Key Invalid", kAnyText, Meaning::kFailure,
                  ExitStatus::kNotSigned},
    // Any other reason is one that nobody has thought of.
    KnownQuestion{kFailureForm, kAnyTitle, kAnyText, Meaning::kFailure, ExitStatus::kInternal},

    KnownQuestion{kMessageBox, "Confirm Exit", kAnyText, Meaning::kExit, {}},
    KnownQuestion{kMessageBox, kAnyTitle, "Go back from version ", Meaning::kWantsToGoBack, {}},
    KnownQuestion{kMessageBox, kAnyTitle, "There is no earlier version of ", Meaning::kNews, {}},
    KnownQuestion{kMessageBox, kAnyTitle, "Cannot go back while ", Meaning::kStillRunning, {}},
    KnownQuestion{kMessageBox, kAnyTitle, "Go Back Error!", Meaning::kFailure, ExitStatus::kDisk},
    KnownQuestion{
        kMessageBox, kAnyTitle, "Should I close the program ", Meaning::kWantsToClose, {}},
    KnownQuestion{kMessageBox, kAnyTitle, " is still running.", Meaning::kStillRunning, {}},
    KnownQuestion{kMessageBox, kAnyTitle, "is not the one that the maker of ", Meaning::kFailure,
                  ExitStatus::kNotSigned},
    KnownQuestion{kMessageBox, kAnyTitle, "Run-time error '", Meaning::kFailure,
                  ExitStatus::kInternal},
    KnownQuestion{kMessageBox, kAnyTitle, "Internet Error: ", Meaning::kFailure, {}},
    KnownQuestion{kMessageBox, kAnyTitle, "Error Number: ", Meaning::kFailure, {}},
    KnownQuestion{
        kMessageBox, kAnyTitle, SWIFTPATCH_PROGRAM " backup File Copy Error: ", Meaning::kNews, {}},
    KnownQuestion{kMessageBox, kAnyTitle, " File Copy Error: ", Meaning::kFailure,
                  ExitStatus::kDisk},
    KnownQuestion{kMessageBox, kAnyTitle, "The update file '", Meaning::kFailure,
                  ExitStatus::kDisk},
    KnownQuestion{kMessageBox, kAnyTitle, "Error: ", Meaning::kFailure, {}},
    KnownQuestion{
        kMessageBox, kAnyTitle, "No version information available for", Meaning::kNews, {}},
    KnownQuestion{
        kMessageBox, kAnyTitle, "A backup file for your current version", Meaning::kNews, {}},
    KnownQuestion{kMessageBox, kAnyTitle, SWIFTPATCH_PROGRAM " not found in ", Meaning::kNews, {}},
};

bool Fits(const KnownQuestion& known, const Question& question) {
    return question.form == known.form && (*known.title == '\0' || question.title == known.title) &&
           question.text.find(known.part) != std::string::npos;
}

std::int32_t NumberBehind(const std::string& part, const std::string& text) {
    return static_cast<std::int32_t>(
        std::strtoul(text.c_str() + text.find(part) + part.size(), nullptr, 10));
}

ExitStatus StatusOf(const KnownQuestion& known, const std::string& text) {
    if (known.status || known.meaning != Meaning::kFailure) {
        return known.status.value_or(ExitStatus::kInternal);
    }
    return StatusOfError(NumberBehind(known.part, text));
}

}  // namespace

Judgement Judge(const Question& question) {
    const auto* const known =
        std::find_if(kQuestions.begin(), kQuestions.end(),
                     [&question](const KnownQuestion& each) { return Fits(each, question); });
    return known == kQuestions.end() ? Judgement{}
                                     : Judgement{known->meaning, StatusOf(*known, question.text)};
}

MsgBoxAnswer SafeAnswer(const Question& question) {
    constexpr int kButtons = 0x0F;  // MB_TYPEMASK
    return (question.style & kButtons) == msgbox::kYesNo ? MsgBoxAnswer::kNo : MsgBoxAnswer::kOk;
}

}  // namespace swiftpatch
