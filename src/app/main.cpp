#include "app/frmSplash1.h"
#include "runtime/program.h"

namespace swiftpatch {

/// The splash window's load event runs the rest of the start.
void Main() { frmSplash1::Instance.Get().Show(); }

}  // namespace swiftpatch
