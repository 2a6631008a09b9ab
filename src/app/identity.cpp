#include "runtime/program.h"
#include "shared/version.h"

namespace swiftpatch {

const ProgramIdentity kProgram{kProductName, kVersionMajor, kVersionMinor, kVersionRevision};

}  // namespace swiftpatch
