#include "runtime/internal/program_head.h"

#include <algorithm>

// The headers of a Portable Executable: the old DOS header leads to a signature, which the header
// of the file, the optional header and the table of the sections follow.

namespace swiftpatch {
namespace {

constexpr std::uint32_t kDosSignature = 0x5A4D;     // IMAGE_DOS_SIGNATURE
constexpr std::uint32_t kNtSignature = 0x4550;      // IMAGE_NT_SIGNATURE
constexpr std::uint32_t kOptionalOf64Bits = 0x20B;  // IMAGE_NT_OPTIONAL_HDR64_MAGIC

constexpr std::size_t kNewHeaderAt = 0x3C;   // e_lfanew
constexpr std::size_t kSectionsAt = 6;       // NumberOfSections, from the signature on
constexpr std::size_t kOptionalSizeAt = 20;  // SizeOfOptionalHeader
constexpr std::size_t kOptionalAt = 24;
constexpr std::size_t kSectionSize = 40;  // sizeof(IMAGE_SECTION_HEADER)
constexpr std::size_t kRawSizeAt = 16;    // SizeOfRawData, from the section's header on
constexpr std::size_t kRawDataAt = 20;    // PointerToRawData

// Of the certificates, IMAGE_DIRECTORY_ENTRY_SECURITY; alone of all its place is one in the file.
constexpr std::size_t kCertificatesAt = 128;  // From the optional header on.
constexpr std::size_t kCertificatesAtOf64Bits = 144;

class Head {
public:
    explicit Head(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    bool Holds(std::uint64_t length) const { return length <= bytes_.size(); }
    /// 0 beyond the end, where no header is.
    std::uint32_t Word(std::uint64_t at) const { return Number(at, 2); }
    std::uint32_t Double(std::uint64_t at) const { return Number(at, 4); }
    /// The end of what has its place and its length there.
    std::uint64_t EndOf(std::uint64_t placeAt, std::uint64_t lengthAt) const {
        const std::uint64_t length = Double(lengthAt);
        return length == 0 ? 0 : Double(placeAt) + length;
    }

private:
    std::uint32_t Number(std::uint64_t at, std::size_t size) const {
        std::uint32_t value = 0;
        for (std::size_t i = Holds(at + size) ? size : 0; i-- > 0;) {
            value = value << 8 | bytes_[static_cast<std::size_t>(at) + i];
        }
        return value;
    }

    std::span<const std::uint8_t> bytes_;
};

/// 0 without certificates.
std::uint64_t EndOfCertificates(const Head& head, std::uint64_t optional, std::uint32_t size) {
    const bool wide = head.Word(optional) == kOptionalOf64Bits;
    const std::size_t at = wide ? kCertificatesAtOf64Bits : kCertificatesAt;
    return size < at + 8 ? 0 : head.EndOf(optional + at, optional + at + 4);
}

}  // namespace

std::optional<std::uint64_t> LengthOfProgram(std::span<const std::uint8_t> bytes) {
    const Head head(bytes);
    const std::uint64_t start = head.Double(kNewHeaderAt);
    const std::uint32_t sections = head.Word(start + kSectionsAt);
    const std::uint32_t optionalSize = head.Word(start + kOptionalSizeAt);
    const std::uint64_t table = start + kOptionalAt + optionalSize;
    if (head.Word(0) != kDosSignature || head.Double(start) != kNtSignature ||
        !head.Holds(table + sections * kSectionSize)) {
        return {};
    }
    std::uint64_t end = EndOfCertificates(head, start + kOptionalAt, optionalSize);
    for (std::uint32_t i = 0; i < sections; ++i) {
        const std::uint64_t section = table + i * kSectionSize;
        end = std::max(end, head.EndOf(section + kRawDataAt, section + kRawSizeAt));
    }
    return end;
}

}  // namespace swiftpatch
