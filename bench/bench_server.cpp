// The server of the measurements, a process of its own so that it does not share the time of what
// is measured. It publishes bodies of several sizes, /MEGABYTES/tolvex30.exe, and writes its
// address into the file named on the command line. Whoever started it ends it.
#include <cstdio>
#include <exception>
#include <string>

#include "e2e/http_server.h"
#include "e2e/text.h"

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

void Serve(const char* addressFile) {
    HttpServer server;
    Publish(server, 1);
    Publish(server, 256);
    Publish(server, 1024);
    WriteWholeFile(addressFile, server.Host() + "\n");
    std::this_thread::sleep_for(kLongestLife);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: bench_server ADDRESS_FILE\n", stderr);
        return 2;
    }
    try {
        Serve(argv[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_server: %s\n", error.what());
        return 1;
    }
    return 0;
}
