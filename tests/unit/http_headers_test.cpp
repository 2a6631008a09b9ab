#include "runtime/internal/http_headers.h"

#include <gtest/gtest.h>

namespace swiftpatch {
namespace {

TEST(HttpHeaders, FieldIsFoundWithoutRegardToCase) {
    const std::string headers =
        "HTTP/1.1 200 OK\r\nContent-Length: 250000\r\nLAST-modified:\tTue, 10 Mar 2026\r\n\r\n";
    EXPECT_EQ(HeaderValue(headers, "Content-length"), "250000");
    EXPECT_EQ(HeaderValue(headers, "last-MODIFIED"), "Tue, 10 Mar 2026");
}

TEST(HttpHeaders, MissingFieldIsEmpty) {
    EXPECT_EQ(HeaderValue("HTTP/1.1 200 OK\r\nLength: 5\r\n", "Content-Length"), "");
    EXPECT_EQ(HeaderValue("HTTP/1.1 200 OK\r\nX-Content-Length: 5\r\n", "Content-Length"), "");
    EXPECT_EQ(HeaderValue("HTTP/1.1 200 OK\r\nContent-Length-X: 5\r\n", "Content-Length"), "");
    EXPECT_EQ(HeaderValue("", "Content-Length"), "");
}

TEST(HttpHeaders, FirstOfSeveralFieldsCounts) {
    EXPECT_EQ(HeaderValue("H\r\nA: 1\r\na: 2\r\n", "A"), "1");
}

TEST(HttpHeaders, ValueKeepsItsColonsAndLosesTheBlanksAround) {
    EXPECT_EQ(HeaderValue("H\r\nDate:   10:00:01  \r\n", "date"), "10:00:01");
    EXPECT_EQ(HeaderValue("H\r\nDate:\r\nA: 1\r\n", "date"), "");
}

TEST(HttpHeaders, LinesMayEndInLfAloneAndTheLastInNothing) {
    EXPECT_EQ(HeaderValue("H\nA: 1\nB: 2", "A"), "1");
    EXPECT_EQ(HeaderValue("H\nA: 1\nB: 2", "B"), "2");
}

}  // namespace
}  // namespace swiftpatch
