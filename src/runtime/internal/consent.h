#pragma once

#include <string>

namespace swiftpatch {

/// Asked before each request of the program. Always true where a person is in front of it, who can
/// stop the run. Where it is false the run ends. Does not pump.
bool MayRequest(const std::string& url, const std::string& verb);

}  // namespace swiftpatch
