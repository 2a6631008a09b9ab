#include "runtime/controls.h"

namespace swiftpatch {

void Control::Refresh() {}

void Control::SetFocus() {}

void Animation::Open(const std::string& /*path*/) {}

void Animation::Stop() {}

}  // namespace swiftpatch
