#pragma once

#include <functional>
#include <string>

namespace swiftpatch {

/// Cuts a text that comes in blocks into lines ended by CR LF. A CR or LF alone is a part of its
/// line; the last line may lack its ending.
class LineReader {
public:
    /// `readBlock` returns the next bytes of the text, none at its end, and may raise an error.
    explicit LineReader(std::function<std::string()> readBlock);

    /// True when no line is left. Reads ahead as far as it has to.
    bool AtEnd();

    /// The next line without its ending. Raises 62 Input past end of file.
    std::string Next();

private:
    bool Fill();

    std::function<std::string()> readBlock_;
    std::string block_;
    std::size_t position_ = 0;
};

}  // namespace swiftpatch
