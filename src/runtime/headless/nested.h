#pragma once

namespace swiftpatch::headless {

/// Counts a nested state for as long as it lasts, also when an exception ends it.
class Nested {
public:
    explicit Nested(int& depth) : depth_(depth) { ++depth_; }
    ~Nested() { --depth_; }
    Nested(const Nested&) = delete;
    Nested& operator=(const Nested&) = delete;

private:
    int& depth_;
};

}  // namespace swiftpatch::headless
