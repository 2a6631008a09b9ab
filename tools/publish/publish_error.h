#pragma once

#include <stdexcept>
#include <string>

namespace publish {

/// What a release that was broken off has left behind.
enum class Left {
    kAsItWas,   ///< The folder.
    kUploaded,  ///< The folder too, but files have been handed to the command to upload with.
    kChanged,   ///< What was replaced could not be put back.
};

/// Nothing was published; says why.
class PublishError : public std::runtime_error {
public:
    explicit PublishError(const std::string& why, Left left = Left::kAsItWas)
        : std::runtime_error(why), left_(left) {}

    Left WhatIsLeft() const { return left_; }

private:
    Left left_;
};

}  // namespace publish
