#include "runtime/code_page.h"

namespace swiftpatch {
namespace {

/// The smallest second byte in any code page. A smaller one after a lead byte is a character of its
/// own: such a text is damaged.
constexpr unsigned char kSmallestTrailByte = 0x40;

}  // namespace

std::string MaskTrailBytes(std::string_view text) {
    std::string masked(text);
    for (std::size_t i = 0; i + 1 < masked.size(); ++i) {
        const char byte = masked[i];
        if (IsLeadByte(byte) && static_cast<unsigned char>(masked[i + 1]) >= kSmallestTrailByte) {
            masked[++i] = byte;
        }
    }
    return masked;
}

}  // namespace swiftpatch
