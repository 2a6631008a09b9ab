// Finds the version block of a Windows executable: file header, section table, tree of resources.
#include "publish_check/bytes.h"
#include "publish_check/version.h"

namespace publish_check {
namespace {

constexpr std::uint32_t kVersionResource = 16;          // RT_VERSION
constexpr std::uint32_t kFixedSignature = 0xFEEF04BDU;  // Of VS_FIXEDFILEINFO.
constexpr std::uint32_t kSubfolder = 0x80000000U;       // Marks an entry that leads further down.
constexpr std::size_t kFixedBlockSize = 52;

/// A part of the file that is mapped to an address.
struct Section {
    std::uint32_t address = 0;
    std::uint32_t place = 0;
    std::uint32_t size = 0;
};

class Executable {
public:
    explicit Executable(std::string_view bytes) : bytes_(bytes) {
        if (bytes_.Part(0, 2) != "MZ") {
            throw OutOfBytes();
        }
        header_ = bytes_.DoubleWord(0x3C);
        if (bytes_.Part(header_, 4) != std::string_view("PE\0\0", 4)) {
            throw OutOfBytes();
        }
    }

    FileVersions Versions() const {
        const std::size_t root = PlaceOf(ResourceAddress());
        // Type, name, language: the tree has three levels, and the first of each is what counts.
        const std::uint32_t names = Entry(root, kVersionResource) & ~kSubfolder;
        const std::uint32_t languages = FirstEntry(root + names) & ~kSubfolder;
        const std::size_t leaf = root + FirstEntry(root + languages);
        return ReadBlock(PlaceOf(bytes_.DoubleWord(leaf)));
    }

    bool IsWhole() const {
        for (std::uint32_t i = 0; i < SectionCount(); ++i) {
            const Section section = SectionAt(i);
            if (std::uint64_t{section.place} + section.size > bytes_.Size()) {
                return false;
            }
        }
        return true;
    }

private:
    std::uint32_t SectionCount() const { return bytes_.Word(header_ + 6); }

    Section SectionAt(std::uint32_t index) const {
        const std::size_t table = header_ + 24 + bytes_.Word(header_ + 20);
        const std::size_t entry = table + static_cast<std::size_t>(index) * 40;
        return {bytes_.DoubleWord(entry + 12), bytes_.DoubleWord(entry + 20),
                bytes_.DoubleWord(entry + 16)};
    }

    std::uint32_t ResourceAddress() const {
        constexpr std::uint32_t kLargeHeader = 0x20B;  // Of a 64-bit program.
        const std::size_t optional = header_ + 24;
        const bool large = bytes_.Word(optional) == kLargeHeader;
        const std::size_t directories = optional + (large ? 112U : 96U);
        constexpr std::uint32_t kResources = 2;
        if (bytes_.DoubleWord(directories - 4) <= kResources) {
            throw OutOfBytes();
        }
        const std::uint32_t address = bytes_.DoubleWord(directories + kResources * 8);
        if (address == 0) {
            throw OutOfBytes();
        }
        return address;
    }

    /// Where in the file an address of the loaded program lies.
    std::size_t PlaceOf(std::uint32_t address) const {
        for (std::uint32_t i = 0; i < SectionCount(); ++i) {
            const Section section = SectionAt(i);
            if (address >= section.address && address - section.address < section.size) {
                return std::size_t{section.place} + (address - section.address);
            }
        }
        throw OutOfBytes();
    }

    std::uint32_t EntryCount(std::size_t folder) const {
        return bytes_.Word(folder + 12) + bytes_.Word(folder + 14);
    }

    std::uint32_t Entry(std::size_t folder, std::uint32_t id) const {
        for (std::uint32_t i = 0; i < EntryCount(folder); ++i) {
            const std::size_t entry = folder + 16 + static_cast<std::size_t>(i) * 8;
            if (bytes_.DoubleWord(entry) == id) {
                return bytes_.DoubleWord(entry + 4);
            }
        }
        throw OutOfBytes();
    }

    std::uint32_t FirstEntry(std::size_t folder) const {
        if (EntryCount(folder) == 0) {
            throw OutOfBytes();
        }
        return bytes_.DoubleWord(folder + 20);
    }

    /// The block begins with its lengths and its name; what follows stands at multiples of four.
    FileVersions ReadBlock(std::size_t place) const {
        constexpr std::string_view kName("V\0S\0_\0V\0E\0R\0S\0I\0O\0N\0_\0I\0N\0F\0O\0\0\0", 32);
        constexpr std::uint32_t kFixedPlace = 40;
        if (bytes_.Part(place + 6, kName.size()) != kName ||
            bytes_.Word(place + 2) < kFixedBlockSize ||
            bytes_.DoubleWord(place + kFixedPlace) != kFixedSignature) {
            throw OutOfBytes();
        }
        bytes_.Part(place + kFixedPlace, kFixedBlockSize);
        return {ReadVersion(place + kFixedPlace + 8), ReadVersion(place + kFixedPlace + 16)};
    }

    Version ReadVersion(std::size_t place) const {
        const auto part = [this, place](std::size_t at) {
            return static_cast<std::uint16_t>(bytes_.Word(place + at));
        };
        return {part(2), part(0), part(6), part(4)};
    }

    Bytes bytes_;
    std::size_t header_ = 0;
};

}  // namespace

bool IsCutOff(std::string_view executable) {
    try {
        return !Executable(executable).IsWhole();
    } catch (const OutOfBytes&) {
        return false;
    }
}

std::optional<FileVersions> ReadFileVersions(std::string_view executable) {
    try {
        return Executable(executable).Versions();
    } catch (const OutOfBytes&) {
        return std::nullopt;
    }
}

}  // namespace publish_check
