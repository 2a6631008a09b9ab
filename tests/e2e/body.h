#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace swiftpatch::e2e {

/// The body of an answer: given bytes, or a pattern of any length that needs no memory.
class Body {
public:
    Body() = default;
    explicit Body(std::string bytes);

    /// `size` bytes that repeat a pattern whose length is a prime, so that a block which is lost
    /// or comes twice shows.
    static Body Pattern(std::uint64_t size);

    std::uint64_t Size() const { return size_; }
    /// Up to `count` bytes from `offset` on.
    std::string Read(std::uint64_t offset, std::size_t count) const;

private:
    std::shared_ptr<const std::string> bytes_;
    std::uint64_t size_ = 0;
};

}  // namespace swiftpatch::e2e
