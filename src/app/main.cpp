#include "app/main.h"

#include "app/frmSplash1.h"

namespace swiftpatch {

void Main() { frmSplash1::Instance.Get().Show(); }

}  // namespace swiftpatch
