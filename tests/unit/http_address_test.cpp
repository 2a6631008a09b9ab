#include "runtime/internal/http_address.h"

#include <gtest/gtest.h>

#include "runtime/runtime_error.h"

namespace swiftpatch {
namespace {

/// "host port path", or the number of the error.
std::string Parts(const std::string& url) {
    try {
        const HttpAddress address = ParseHttpAddress(url);
        return address.host + " " + std::to_string(address.port) + " " + address.path;
    } catch (const RuntimeError& error) {
        return std::to_string(error.Number());
    }
}

TEST(HttpAddress, HostPortAndPath) {
    EXPECT_EQ(Parts("http://tolvex.example:8080/files/tolvex30.exe"),
              "tolvex.example 8080 /files/tolvex30.exe");
    EXPECT_EQ(Parts("http://tolvex.example/files/"), "tolvex.example 80 /files/");
}

TEST(HttpAddress, SchemeMayBeMissingAndHasNoCase) {
    EXPECT_EQ(Parts("tolvex.example/files"), "tolvex.example 80 /files");
    EXPECT_EQ(Parts("HTTP://tolvex.example/files"), "tolvex.example 80 /files");
    EXPECT_EQ(Parts("localhost:81"), "localhost 81 /");
}

TEST(HttpAddress, WithoutAPathItIsTheRoot) {
    EXPECT_EQ(Parts("http://tolvex.example"), "tolvex.example 80 /");
    EXPECT_EQ(Parts("tolvex.example?a=b"), "tolvex.example 80 /?a=b");
}

TEST(HttpAddress, QueryStaysAndTheFragmentGoes) {
    EXPECT_EQ(Parts("host/a?b=c&u=http://other/#part"), "host 80 /a?b=c&u=http://other/");
    EXPECT_EQ(Parts("host#part/x"), "host 80 /");
}

TEST(HttpAddress, OtherSchemesAreRefused) {
    EXPECT_EQ(Parts("ftp://host/a"), "35752");
    EXPECT_EQ(Parts("https://host/a"), "35752");
    EXPECT_EQ(Parts("http://ftp://host"), "35752");
}

TEST(HttpAddress, PortsOutOfRangeAreRefused) {
    EXPECT_EQ(Parts("host:65535/"), "host 65535 /");
    for (const char* url : {"host:0/", "host:65536/", "host:/", "host:80x/", "host:-1/"}) {
        EXPECT_EQ(Parts(url), "35752") << url;
    }
}

TEST(HttpAddress, AddressWithoutAHostIsRefused) {
    for (const char* url : {"", "/", "http://", "http:///a", ":80/a", "?a", "#a"}) {
        EXPECT_EQ(Parts(url), "35752") << url;
    }
}

TEST(HttpAddress, HostsThatCannotBeAreRefused) {
    for (const char* url :
         {"a b/c", "user@host/", "a\\b/", "a\"b", "<host>", "host\r\nX: y/", "host\x7F/"}) {
        EXPECT_EQ(Parts(url), "35752") << url;
    }
}

TEST(HttpAddress, NumericAddressesOfTheNewKindStandInBrackets) {
    EXPECT_EQ(Parts("http://[::1]:8080/a"), "[::1] 8080 /a");
    EXPECT_EQ(Parts("[::1]/a"), "[::1] 80 /a");
}

TEST(HttpAddress, BlanksAndForeignBytesInThePathAreEscaped) {
    EXPECT_EQ(Parts("host/my files/\xE4.exe"), "host 80 /my%20files/%E4.exe");
    EXPECT_EQ(Parts("host/a\x7F"), "host 80 /a%7F");
    EXPECT_EQ(Parts("host/a%20b"), "host 80 /a%20b");
}

TEST(HttpAddress, LineEndsInThePathAreRefused) {
    EXPECT_EQ(Parts("host/a\r\nX: y"), "35752");
    EXPECT_EQ(Parts("host/a\tb"), "35752");
}

}  // namespace
}  // namespace swiftpatch
