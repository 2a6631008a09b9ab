#pragma once

#include <stdexcept>

namespace swiftpatch::e2e {

/// What was waited for did not happen, or the system refused something: ends the test with a
/// sentence that says what was missing.
class DriveError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace swiftpatch::e2e
