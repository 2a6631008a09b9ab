#pragma once

#include <stdexcept>

namespace publish_check {

/// The command line cannot be understood; says why.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace publish_check
