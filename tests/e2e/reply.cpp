#include "e2e/reply.h"

namespace swiftpatch::e2e {

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
    if (!reply.omitContentLength) {
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

bool EndsWithConnection(const Reply& reply) { return reply.omitContentLength; }

}  // namespace swiftpatch::e2e
