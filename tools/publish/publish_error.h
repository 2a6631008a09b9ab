#pragma once

#include <stdexcept>

namespace publish {

/// Nothing was published, and the folder is as it was; says why.
class PublishError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace publish
