#pragma once

#include <string>

#include "e2e/body.h"

namespace swiftpatch::e2e {

/// A build of `size` bytes, for copies that have to take a while: the given one and a pattern.
inline std::string Padded(std::string build, std::size_t size) {
    build += Body::Pattern(size - build.size()).Read(0, size - build.size());
    return build;
}

}  // namespace swiftpatch::e2e
