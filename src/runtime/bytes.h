#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

namespace swiftpatch {

/// Some bytes that came in. Copies and parts share the memory, which lives as long as any of them.
class Bytes {
public:
    Bytes() = default;
    /// The first `size` bytes of `memory`.
    Bytes(std::shared_ptr<const char[]> memory, std::size_t size)
        : memory_(std::move(memory)), view_(memory_.get(), size) {}
    /// A copy.
    static Bytes Of(std::string_view bytes) {
        const std::shared_ptr<char[]> memory(new char[bytes.size()]);
        std::copy(bytes.begin(), bytes.end(), memory.get());
        return {memory, bytes.size()};
    }

    std::size_t size() const { return view_.size(); }
    bool empty() const { return view_.empty(); }
    std::string_view View() const { return view_; }

    /// Takes the first bytes away, `most` at most.
    Bytes TakeFront(std::size_t most) {
        Bytes front = *this;
        front.view_ = view_.substr(0, most);
        view_.remove_prefix(front.size());
        return front;
    }

private:
    std::shared_ptr<const char[]> memory_;
    std::string_view view_;
};

inline bool operator==(const Bytes& one, std::string_view other) { return one.View() == other; }

}  // namespace swiftpatch
