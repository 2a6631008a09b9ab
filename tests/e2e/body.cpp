#include "e2e/body.h"

#include <algorithm>
#include <utility>

namespace swiftpatch::e2e {
namespace {

std::shared_ptr<const std::string> MakePattern() {
    constexpr std::size_t kPrime = 65521;
    std::string pattern(kPrime, '\0');
    std::uint32_t state = 1;
    for (char& byte : pattern) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<char>(state >> 24U);
    }
    return std::make_shared<const std::string>(std::move(pattern));
}

}  // namespace

Body::Body(std::string bytes)
    : bytes_(std::make_shared<const std::string>(std::move(bytes))), size_(bytes_->size()) {}

Body Body::Pattern(std::uint64_t size) {
    static const std::shared_ptr<const std::string> kPattern = MakePattern();
    Body body;
    body.bytes_ = kPattern;
    body.size_ = size;
    return body;
}

std::string Body::Read(std::uint64_t offset, std::size_t count) const {
    std::string result;
    const std::uint64_t end = std::min<std::uint64_t>(size_, offset + count);
    while (offset < end) {
        const auto start = static_cast<std::size_t>(offset % bytes_->size());
        const auto part =
            static_cast<std::size_t>(std::min<std::uint64_t>(end - offset, bytes_->size() - start));
        result.append(*bytes_, start, part);
        offset += part;
    }
    return result;
}

}  // namespace swiftpatch::e2e
