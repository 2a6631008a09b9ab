#pragma once

#include "runtime/console/attendant.h"

namespace swiftpatch {

/// The attendant of this run.
Attendant& TheAttendant();
void SetAttendant(Attendant& attendant);

// The forms that are loaded, in the order in which they were.
void AddForm(Form& form);
void RemoveForm(const Form& form);
bool AnyFormLoaded();

/// The first timer of theirs that runs; null for none.
Timer* RunningTimer();

}  // namespace swiftpatch
