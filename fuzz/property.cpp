#include "property.h"

#include <cstdio>
#include <cstdlib>

namespace swiftpatch::fuzz {

void Always(bool holds, std::string_view rule) {
    if (!holds) {
        std::fprintf(stderr, "broken: %.*s\n", static_cast<int>(rule.size()), rule.data());
        std::abort();
    }
}

std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

std::vector<std::string_view> Fields(std::string_view input, std::size_t count) {
    std::vector<std::string_view> fields(count);
    for (std::size_t i = 0; i + 1 < count; ++i) {
        const std::size_t end = input.find('\n');
        fields[i] = input.substr(0, end);
        input = end == std::string_view::npos ? std::string_view() : input.substr(end + 1);
    }
    fields.back() = input;
    return fields;
}

}  // namespace swiftpatch::fuzz
