#include "runtime/program.h"
#include "shared/branding.h"
#include "shared/version.h"

namespace swiftpatch {

const ProgramIdentity kProgram{SWIFTPATCH_UPDATER_TITLE, SWIFTPATCH_INSTANCE_NAME, kVersionMajor,
                               kVersionMinor, kVersionRevision};

}  // namespace swiftpatch
