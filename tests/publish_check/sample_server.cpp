#include "publish_check/sample_server.h"

#include <algorithm>

#include "fixtures/animation.h"

namespace publish_check {
namespace {

constexpr std::size_t kSectionSize = 0x200;
constexpr std::size_t kSmallest = 0x400;
constexpr std::uint32_t kSectionAddress = 0x1000;

void Put(std::string& bytes, std::size_t at, std::uint32_t value, std::size_t count = 4) {
    for (std::size_t i = 0; i < count; ++i) {
        bytes[at + i] = static_cast<char>(value >> (8 * i) & 0xFFU);
    }
}

std::uint32_t Words(std::uint16_t high, std::uint16_t low) {
    return std::uint32_t{high} << 16U | low;
}

/// Where the section with the resources begins: linkers put it last.
std::size_t SectionPlace(const std::string& file) { return file.size() - kSectionSize; }

/// File header, optional header and one section, which holds the resources.
void PutHeaders(std::string& file) {
    constexpr std::size_t kHeader = 64;
    file.replace(0, 2, "MZ");
    Put(file, 0x3C, kHeader);
    file.replace(kHeader, 2, "PE");
    Put(file, kHeader + 4, 0x14C, 2);
    Put(file, kHeader + 6, 1, 2);
    Put(file, kHeader + 20, 224, 2);
    const std::size_t optional = kHeader + 24;
    Put(file, optional, 0x10B, 2);
    Put(file, optional + 92, 16);
    Put(file, optional + 96 + 2 * 8, kSectionAddress);
    const std::size_t section = optional + 224;
    file.replace(section, 5, ".rsrc");
    Put(file, section + 12, kSectionAddress);
    Put(file, section + 16, kSectionSize);
    Put(file, section + 20, static_cast<std::uint32_t>(SectionPlace(file)));
}

/// A folder of the resources with one entry.
void PutFolder(std::string& file, std::size_t at, std::uint32_t id, std::uint32_t target) {
    Put(file, SectionPlace(file) + at + 14, 1, 2);
    Put(file, SectionPlace(file) + at + 16, id);
    Put(file, SectionPlace(file) + at + 20, target);
}

void PutVersion(std::string& file, const Version& version) {
    constexpr std::uint32_t kDown = 0x80000000U;
    PutFolder(file, 0, 16, kDown | 0x18U);
    PutFolder(file, 0x18, 1, kDown | 0x30U);
    PutFolder(file, 0x30, 0x409, 0x48);
    Put(file, SectionPlace(file) + 0x48, kSectionAddress + 0x58);
    Put(file, SectionPlace(file) + 0x4C, 92);
    const std::size_t block = SectionPlace(file) + 0x58;
    Put(file, block, 92, 2);
    Put(file, block + 2, 52, 2);
    const std::string name = "VS_VERSION_INFO";
    for (std::size_t i = 0; i < name.size(); ++i) {
        file[block + 6 + 2 * i] = name[i];
    }
    Put(file, block + 40, 0xFEEF04BDU);
    Put(file, block + 48, Words(9, 8));
    Put(file, block + 52, Words(7, 6));
    Put(file, block + 56, Words(version[0], version[1]));
    Put(file, block + 60, Words(version[2], version[3]));
}

}  // namespace

std::string SampleBuild(const std::optional<Version>& version, std::size_t size) {
    std::string file(std::max(size, kSmallest), '\0');
    PutHeaders(file);
    if (version) {
        PutVersion(file, *version);
    }
    return file.substr(0, size);
}

Answer Ok(const std::string& headers, const std::string& body) {
    Answer answer;
    answer.answered = true;
    answer.status = 200;
    answer.headers = "HTTP/1.1 200 OK\r\n" + headers;
    answer.body = body;
    return answer;
}

PublishedFile Published(const std::string& body, const std::string& date) {
    const std::string headers = "Content-Length: " + std::to_string(body.size()) + "\r\n" +
                                (date.empty() ? "" : "Last-Modified: " + date + "\r\n");
    return {Ok(headers), Ok(headers, body), {}};
}

swiftpatch::DateTime LookTime() { return swiftpatch::MakeDateTime({2020, 2, 6, 12, 0, 0}); }

ServerState GoodServer() {
    ServerState state;
    state.address = "tolvex.example/files/";
    state.build = Published(SampleBuild(kPublishedVersion, 210000), kPublishedDate);
    state.licence = Published(std::string(5000, 'L'));
    state.animation = Published(swiftpatch::fixtures::MakeAnimation(2));
    return state;
}

}  // namespace publish_check
