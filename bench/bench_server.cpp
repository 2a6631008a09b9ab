// The server of the measurements, a process of its own so that it does not share the time of what
// is measured. It publishes bodies of several sizes, /MEGABYTES/tolvex30.exe, the one of 256 also
// with its signature where that is asked for, and writes its address into the file named on the
// command line. Whoever started it ends it.
//
// usage: bench_server ADDRESS_FILE [signed]
#include <cstdio>
#include <exception>
#include <string>

#include "e2e/http_server.h"
#include "e2e/text.h"
#include "support/byte_text.h"
#include "support/minisign_signer.h"

namespace {

using namespace swiftpatch::e2e;

constexpr seconds kLongestLife{1200};
constexpr std::uint64_t kMegabyte = 1024 * 1024;

void Publish(HttpServer& server, std::uint64_t megabytes) {
    Reply reply;
    reply.body = Body::Pattern(megabytes * kMegabyte);
    reply.lastModified = "Wed, 05 Feb 2020 08:12:00 GMT";
    server.On("/" + std::to_string(megabytes) + "/tolvex30.exe", reply);
}

void PublishSignature(HttpServer& server, std::uint64_t megabytes) {
    const Body body = Body::Pattern(megabytes * kMegabyte);
    swiftpatch::Blake2b hash;
    for (std::uint64_t at = 0; at < body.Size(); at += kMegabyte) {
        const std::string block = body.Read(at, kMegabyte);
        hash.Update(swiftpatch::AsBytes(block));
    }
    Reply reply;
    reply.body = Body(swiftpatch::MinisignSigner("maker").SignBuild(
        hash.Finish(), swiftpatch::TrustedCommentFor("tolvex30.exe")));
    server.On("/" + std::to_string(megabytes) + "/tolvex30.exe.minisig", reply);
}

void Serve(const char* addressFile, bool isSigned) {
    HttpServer server;
    if (isSigned) {
        PublishSignature(server, 256);
    }
    Publish(server, 1);
    Publish(server, 256);
    Publish(server, 1024);
    WriteWholeFile(addressFile, server.Host() + "\n");
    std::this_thread::sleep_for(kLongestLife);
}

}  // namespace

int main(int argc, char** argv) {
    const bool isSigned = argc == 3 && std::string(argv[2]) == "signed";
    if (argc != 2 && !isSigned) {
        std::fputs("usage: bench_server ADDRESS_FILE [signed]\n", stderr);
        return 2;
    }
    try {
        Serve(argv[1], isSigned);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_server: %s\n", error.what());
        return 1;
    }
    return 0;
}
