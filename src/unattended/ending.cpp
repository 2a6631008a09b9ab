#include "unattended/ending.h"

namespace swiftpatch {

ExitStatus StatusOf(const Ending& ending) {
    if (ending.otherUpdater) {
        return ExitStatus::kOtherUpdater;
    }
    if (ending.programReplaced) {
        return ExitStatus::kInstalled;
    }
    if (ending.updateReady) {
        return ExitStatus::kReady;
    }
    if (ending.failure) {
        return *ending.failure;
    }
    if (ending.failedRequest) {
        return StatusOfError(*ending.failedRequest);
    }
    return ending.finished ? ExitStatus::kNothingToDo : ExitStatus::kInternal;
}

}  // namespace swiftpatch
