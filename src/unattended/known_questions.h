#pragma once

#include <cstdint>

#include "runtime/console/attendant.h"
#include "unattended/exit_status.h"

namespace swiftpatch {

/// What a question of the program is about.
enum class Meaning {
    kNews,     ///< Says something; the run goes on.
    kFailure,  ///< Ends the run, or what it was for.
    kWantsToGoBack,
    kWantsToClose,  ///< Whether the main program may be closed.
    kStillRunning,  ///< Nothing is installed because the main program runs.
    kExit,          ///< Whether an unfinished run may end.
    kUnknown,
};

struct Judgement {
    Meaning meaning = Meaning::kUnknown;
    ExitStatus status = ExitStatus::kInternal;  ///< What a failure comes to.
};

/// Recognises a question by its form, its title and a part of its text, and a failure by the number
/// of its error where it tells one.
Judgement Judge(const Question& question);

/// The answer that changes nothing.
MsgBoxAnswer SafeAnswer(const Question& question);

}  // namespace swiftpatch
