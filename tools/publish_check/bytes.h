#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace publish_check {

/// Something lies beyond the end of a file.
struct OutOfBytes {};

/// Little-endian numbers at places of a file that was not made by us: every look at it is checked.
class Bytes {
public:
    explicit Bytes(std::string_view bytes) : bytes_(bytes) {}

    std::size_t Size() const { return bytes_.size(); }
    std::uint32_t Word(std::size_t at) const { return Number(at, 2); }
    std::uint32_t DoubleWord(std::size_t at) const { return Number(at, 4); }

    /// `count` bytes from `at` on. Throws OutOfBytes when they are not all there.
    std::string_view Part(std::size_t at, std::size_t count) const {
        if (at > bytes_.size() || count > bytes_.size() - at) {
            throw OutOfBytes();
        }
        return bytes_.substr(at, count);
    }

private:
    std::uint32_t Number(std::size_t at, std::size_t count) const {
        const std::string_view part = Part(at, count);
        std::uint32_t number = 0;
        for (std::size_t i = count; i-- > 0;) {
            number = number << 8U | static_cast<unsigned char>(part[i]);
        }
        return number;
    }

    std::string_view bytes_;
};

}  // namespace publish_check
