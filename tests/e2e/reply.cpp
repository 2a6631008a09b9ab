#include "e2e/reply.h"

#include <sstream>

namespace swiftpatch::e2e {

void SendInChunks(Reply& reply, std::size_t size) {
    std::ostringstream chunks;
    chunks << std::hex;
    for (std::uint64_t sent = 0; sent < reply.body.Size(); sent += size) {
        const std::string bytes = reply.body.Read(sent, size);
        chunks << bytes.size() << "\r\n" << bytes << "\r\n";
    }
    chunks << "0\r\n\r\n";
    reply.body = Body(chunks.str());
    reply.headers.emplace_back("Transfer-Encoding: chunked");
    reply.chunked = true;
}

Reply NotFound(std::size_t pageSize) {
    std::string page = "<html><body><h1>Not Found</h1></body></html>\r\n";
    page.resize(pageSize, ' ');
    Reply reply;
    reply.statusLine = "HTTP/1.1 404 Not Found";
    reply.headers = {"Content-type: text/html"};
    reply.body = Body(page);
    return reply;
}

std::string HeadOf(const Reply& reply) {
    std::string head = reply.statusLine + "\r\nServer: scripted\r\n";
    if (reply.contentLength || !(reply.omitContentLength || reply.chunked)) {
        head +=
            "Content-length: " + reply.contentLength.value_or(std::to_string(reply.body.Size())) +
            "\r\n";
    }
    if (reply.lastModified) {
        head += "Last-modified: " + *reply.lastModified + "\r\n";
    }
    if (EndsWithConnection(reply)) {
        head += "Connection: close\r\n";
    }
    for (const std::string& line : reply.headers) {
        head += line + "\r\n";
    }
    return head + "\r\n";
}

bool EndsWithConnection(const Reply& reply) { return reply.omitContentLength && !reply.chunked; }

}  // namespace swiftpatch::e2e
