#include "runtime/win32/cabinet_header.h"

#include <array>
#include <cstring>

#include "runtime/win32/handle.h"

namespace swiftpatch {
namespace {

// Places in the header of a cabinet. Its numbers have their low byte first.
constexpr std::size_t kHeaderSize = 36;
constexpr std::size_t kFileCountAt = 28;
constexpr std::size_t kFlagsAt = 30;
constexpr unsigned kHasPrevious = 1;

using HeaderBytes = std::array<unsigned char, kHeaderSize>;

unsigned WordAt(const HeaderBytes& bytes, std::size_t at) {
    return bytes[at] | static_cast<unsigned>(bytes[at + 1]) << 8;
}

}  // namespace

DWORD ReadCabinetHeader(const std::string& path, CabinetHeader& header) {
    const UniqueFile file(::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) {
        return ::GetLastError();
    }
    HeaderBytes bytes{};
    DWORD count = 0;
    if (!::ReadFile(file.Get(), bytes.data(), kHeaderSize, &count, nullptr)) {
        return ::GetLastError();
    }
    if (count != kHeaderSize || std::memcmp(bytes.data(), "MSCF", 4) != 0) {
        return ERROR_INVALID_DATA;
    }
    header.files = WordAt(bytes, kFileCountAt);
    header.hasPrevious = (WordAt(bytes, kFlagsAt) & kHasPrevious) != 0;
    return ERROR_SUCCESS;
}

}  // namespace swiftpatch
