#pragma once

namespace swiftpatch {

/// Sets a flag for as long as a procedure runs, however it is left.
class FlagWhile {
public:
    explicit FlagWhile(bool& flag) : flag_(flag) { flag_ = true; }
    ~FlagWhile() { flag_ = false; }
    FlagWhile(const FlagWhile&) = delete;
    FlagWhile& operator=(const FlagWhile&) = delete;

private:
    bool& flag_;
};

}  // namespace swiftpatch
