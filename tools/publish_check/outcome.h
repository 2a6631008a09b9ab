#pragma once

#include "publish_check/field_machine.h"

namespace swiftpatch {
class frmSwiftPatch;
}

namespace publish_check {

/// What a run that has come to rest came to, by the state of its window.
Outcome OutcomeOf(const swiftpatch::frmSwiftPatch& window, const FieldRun& run);

/// "ready-to-install", for machines.
const char* NameOf(Outcome outcome);

}  // namespace publish_check
