#include "components/cab_writer.h"

namespace swiftpatch::real_system {
namespace {

constexpr std::uint16_t kHasPrevious = 1;
constexpr std::uint16_t kHasNext = 2;
constexpr std::size_t kHeader = 36;
constexpr std::size_t kFolder = 8;

void Put(std::string& out, std::size_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) {
        out += static_cast<char>(value >> (8 * i) & 0xFF);
    }
}

void PutText(std::string& out, const std::string& text) { out.append(text).append(1, '\0'); }

/// The names of a neighbour's file and of the disk it is on.
void PutNeighbour(std::string& out, const std::string& file) {
    if (!file.empty()) {
        PutText(out, file);
        PutText(out, "");
    }
}

std::string EntriesOf(const CabImage& image) {
    std::string out;
    for (const CabEntry& entry : image.entries) {
        Put(out, entry.size, 4);
        Put(out, entry.offset, 4);
        Put(out, entry.folder, 2);
        Put(out, entry.date, 2);
        Put(out, entry.time, 2);
        Put(out, 0x20, 2);
        PutText(out, entry.name);
    }
    return out;
}

std::string BlocksOf(const CabImage& image) {
    std::string out;
    for (const CabBlock& block : image.blocks) {
        Put(out, 0, 4);  // No checksum.
        Put(out, block.bytes.size(), 2);
        Put(out, block.wholeSize, 2);
        out += block.bytes;
    }
    return out;
}

}  // namespace

std::string CabImage::Bytes() const {
    std::string neighbours;
    PutNeighbour(neighbours, previous);
    PutNeighbour(neighbours, next);
    const std::string files = EntriesOf(*this);
    const std::string data = BlocksOf(*this);
    const std::size_t folders = blocks.empty() ? 0 : 1;
    const std::size_t filesAt = kHeader + neighbours.size() + folders * kFolder;
    const int flags = (previous.empty() ? 0 : kHasPrevious) | (next.empty() ? 0 : kHasNext);

    std::string out = "MSCF";
    Put(out, 0, 4);
    Put(out, filesAt + files.size() + data.size(), 4);
    Put(out, 0, 4);
    Put(out, filesAt, 4);
    Put(out, 0, 4);
    out += "\x03\x01";
    Put(out, folders, 2);
    Put(out, entries.size(), 2);
    Put(out, static_cast<std::size_t>(flags), 2);
    Put(out, 4711, 2);
    Put(out, number, 2);
    out += neighbours;
    if (folders != 0) {
        Put(out, filesAt + files.size(), 4);
        Put(out, blocks.size(), 2);
        Put(out, 0, 2);
    }
    return out + files + data;
}

void AddFile(CabImage& image, const std::string& name, const std::string& bytes) {
    std::size_t offset = 0;
    for (const CabBlock& block : image.blocks) {
        offset += block.bytes.size();
    }
    image.entries.push_back(
        {name, static_cast<std::uint32_t>(bytes.size()), static_cast<std::uint32_t>(offset)});
    image.blocks.push_back({bytes, static_cast<std::uint16_t>(bytes.size())});
}

std::string CabOf(const std::string& name, const std::string& bytes) {
    CabImage image;
    AddFile(image, name, bytes);
    return image.Bytes();
}

}  // namespace swiftpatch::real_system
