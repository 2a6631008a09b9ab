#include "runtime/controls.h"

#include "runtime/headless/world.h"

namespace swiftpatch {

using headless::TheWorld;

void Control::Refresh() { TheWorld().trace.Add(Name() + ".Refresh"); }

void Control::SetFocus() { TheWorld().focus = Name(); }

void Animation::Open(const std::string& path) { TheWorld().trace.Add(Name() + ".Open " + path); }

void Animation::Stop() { TheWorld().trace.Add(Name() + ".Stop"); }

}  // namespace swiftpatch
