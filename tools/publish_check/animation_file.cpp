#include "publish_check/animation_file.h"

#include <functional>

#include "publish_check/bytes.h"

namespace publish_check {
namespace {

constexpr std::size_t kHead = 8;  // Of a chunk: its name and its length.

/// What was found in the file.
struct Streams {
    int pictures = 0;
    bool sound = false;
    bool format = false;
    std::uint32_t compression = 0;
    std::uint32_t bits = 0;
    bool frames = false;
    std::string_view lastType;  ///< Of the stream whose headers are being read.
};

using ChunkReader = std::function<void(std::string_view name, std::string_view content)>;

/// Hands out the chunks of a list. One that is said to be longer than the list is not all there.
void EachChunk(std::string_view list, const ChunkReader& reader) {
    const Bytes bytes(list);
    for (std::size_t at = 0; at + kHead <= list.size();) {
        const std::size_t length = bytes.DoubleWord(at + 4);
        reader(list.substr(at, 4), bytes.Part(at + kHead, length));
        at += kHead + length + length % 2;
    }
}

void ReadStreamHeader(std::string_view content, Streams& streams) {
    streams.lastType = Bytes(content).Part(0, 4);
    streams.pictures += streams.lastType == "vids" ? 1 : 0;
    streams.sound = streams.sound || streams.lastType == "auds";
}

void ReadStreamFormat(std::string_view content, Streams& streams) {
    if (streams.lastType == "vids") {
        streams.bits = Bytes(content).Word(14);
        streams.compression = Bytes(content).DoubleWord(16);
        streams.format = true;
    }
}

/// `depth` lists lie around this one; there is no sense in more than three.
void ReadChunks(std::string_view list, Streams& streams, int depth) {
    EachChunk(list, [&streams, depth](std::string_view name, std::string_view content) {
        if (name == "LIST") {
            const std::string_view type = Bytes(content).Part(0, 4);
            if (type == "movi") {
                streams.frames = content.size() > 4 + kHead;
            } else if (depth < 3 && (type == "hdrl" || type == "strl")) {
                ReadChunks(content.substr(4), streams, depth + 1);
            }
        } else if (name == "strh") {
            ReadStreamHeader(content, streams);
        } else if (name == "strf") {
            ReadStreamFormat(content, streams);
        }
    });
}

std::string ReasonIn(const Streams& streams) {
    constexpr std::uint32_t kRunLength8 = 1;  // BI_RLE8; 0 is BI_RGB
    if (streams.sound) {
        return "it has sound";
    }
    if (streams.pictures != 1 || !streams.format) {
        return "it does not hold exactly one picture stream";
    }
    if (streams.compression > kRunLength8) {
        return "its pictures are compressed in a way other than run-length encoding";
    }
    if (streams.compression == kRunLength8 && streams.bits != 8) {
        return "its run-length encoded pictures have not 8 bits a pixel";
    }
    return streams.frames ? "" : "it holds no pictures";
}

}  // namespace

std::string ReasonNotPlayable(std::string_view animation) {
    try {
        const Bytes bytes(animation);
        if (bytes.Part(0, 4) != "RIFF" || bytes.Part(8, 4) != "AVI ") {
            return "it is no AVI file";
        }
        Streams streams;
        ReadChunks(bytes.Part(12, bytes.DoubleWord(4) - 4), streams, 0);
        return ReasonIn(streams);
    } catch (const OutOfBytes&) {
        return "it is cut off or damaged";
    }
}

}  // namespace publish_check
