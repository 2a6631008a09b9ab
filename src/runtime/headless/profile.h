#pragma once

#include <string>

namespace swiftpatch::headless {

/// The buffer as it was handed over to the latest reading of an INI file.
const std::string& LastProfileBuffer();

}  // namespace swiftpatch::headless
