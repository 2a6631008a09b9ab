#pragma once

#include "e2e/updater.h"

namespace swiftpatch::e2e {

/// Ends the waits of a run that is starting, as the timers would: that of the splash window and
/// that before the first check. Answers what is asked meanwhile, and returns with the main window
/// on the screen and the check begun.
void HurryIntoCheck(const Updater& updater);

/// Answers the box or the failure dialog on the screen, if there is one: with Yes or OK.
/// False when there was none.
bool AnswerWhateverAsks(const Updater& updater);

}  // namespace swiftpatch::e2e
