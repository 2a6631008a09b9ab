#include "runtime/internal/line_reader.h"

#include <string_view>
#include <utility>

#include "runtime/runtime_error.h"

namespace swiftpatch {
namespace {

constexpr std::string_view kEnding = "\r\n";

}  // namespace

LineReader::LineReader(std::function<std::string()> readBlock) : readBlock_(std::move(readBlock)) {}

bool LineReader::Fill() {
    block_.erase(0, std::exchange(position_, 0));
    const std::string more = readBlock_();
    block_ += more;
    return !more.empty();
}

bool LineReader::AtEnd() { return position_ == block_.size() && !Fill(); }

std::string LineReader::Next() {
    if (AtEnd()) {
        throw RuntimeError(error_number::kInputPastEndOfFile);
    }
    // After a block has been added the search goes back one byte: the last one may have been a CR.
    std::size_t searched = position_;
    std::size_t end = block_.find(kEnding, searched);
    while (end == std::string::npos) {
        searched = block_.size() - position_ > 1 ? block_.size() - position_ - 1 : 0;
        if (!Fill()) {
            return std::exchange(block_, {});
        }
        end = block_.find(kEnding, searched);
    }
    std::string line = block_.substr(position_, end - position_);
    position_ = end + kEnding.size();
    return line;
}

}  // namespace swiftpatch
