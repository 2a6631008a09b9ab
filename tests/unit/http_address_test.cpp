#include "runtime/internal/http_address.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

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

/// What `reference` means in an answer from `base`, or the number of the error.
std::string Resolved(const std::string& base, const std::string& reference) {
    try {
        return UrlOf(ResolveReference(ParseHttpAddress(base), reference));
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
    EXPECT_EQ(Parts("http://ftp://host"), "35752");
}

TEST(HttpAddress, HttpsIsSecureAndHasAPortOfItsOwn) {
    EXPECT_EQ(Parts("https://host/a"), "host 443 /a");
    EXPECT_EQ(Parts("HTTPS://host:8443/a"), "host 8443 /a");
    EXPECT_TRUE(ParseHttpAddress("https://host/a").secure);
    EXPECT_FALSE(ParseHttpAddress("http://host:443/a").secure);
    EXPECT_FALSE(ParseHttpAddress("host:443/a").secure);
}

TEST(HttpAddress, AsOneTextItNamesOnlyAPortThatIsNotTheSchemesOwn) {
    EXPECT_EQ(UrlOf(ParseHttpAddress("host/a?b")), "http://host/a?b");
    EXPECT_EQ(UrlOf(ParseHttpAddress("http://host:8080")), "http://host:8080/");
    EXPECT_EQ(UrlOf(ParseHttpAddress("https://host:443/a")), "https://host/a");
    EXPECT_EQ(UrlOf(ParseHttpAddress("https://host:80/a")), "https://host:80/a");
    EXPECT_EQ(UrlOf(ParseHttpAddress("http://host:443/a")), "http://host:443/a");
}

// The examples of RFC 3986 section 5.4 that are http.
TEST(HttpAddress, ReferencesAreSeenFromWhereTheyStand) {
    const std::string base = "http://a/b/c/d;p?q";
    for (const auto& [reference, target] :
         std::vector<std::pair<std::string, std::string>>{{"g", "http://a/b/c/g"},
                                                          {"./g", "http://a/b/c/g"},
                                                          {"g/", "http://a/b/c/g/"},
                                                          {"/g", "http://a/g"},
                                                          {"//g", "http://g/"},
                                                          {"?y", "http://a/b/c/d;p?y"},
                                                          {"g?y", "http://a/b/c/g?y"},
                                                          {"#s", "http://a/b/c/d;p?q"},
                                                          {"g#s", "http://a/b/c/g"},
                                                          {"g?y#s", "http://a/b/c/g?y"},
                                                          {";x", "http://a/b/c/;x"},
                                                          {"", "http://a/b/c/d;p?q"},
                                                          {".", "http://a/b/c/"},
                                                          {"./", "http://a/b/c/"},
                                                          {"..", "http://a/b/"},
                                                          {"../", "http://a/b/"},
                                                          {"../g", "http://a/b/g"},
                                                          {"../..", "http://a/"},
                                                          {"../../g", "http://a/g"},
                                                          {"../../../g", "http://a/g"},
                                                          {"/./g", "http://a/g"},
                                                          {"/../g", "http://a/g"},
                                                          {"g.", "http://a/b/c/g."},
                                                          {"..g", "http://a/b/c/..g"},
                                                          {"./g/.", "http://a/b/c/g/"},
                                                          {"g/../h", "http://a/b/c/h"},
                                                          {"g?y/../x", "http://a/b/c/g?y/../x"}}) {
        EXPECT_EQ(Resolved(base, reference), target) << reference;
    }
}

TEST(HttpAddress, ReferencesKeepTheSchemeAndThePortOrNameTheirOwn) {
    EXPECT_EQ(Resolved("https://a:8443/b/", "c"), "https://a:8443/b/c");
    EXPECT_EQ(Resolved("https://a:8443/b/", "//d/c"), "https://d/c");
    EXPECT_EQ(Resolved("https://a:8443/b/", "HTTP://d:81/c"), "http://d:81/c");
    EXPECT_EQ(Resolved("http://a/b?u=c/d", "e"), "http://a/e");
    EXPECT_EQ(Resolved("http://a/b", "/c?u=http://d/"), "http://a/c?u=http://d/");
    EXPECT_EQ(Resolved("http://a/b", "c d"), "http://a/c%20d");
}

TEST(HttpAddress, ReferencesToOtherSchemesAreRefused) {
    for (const char* reference : {"ftp://d/c", "mailto:1", "file:c", "http:c", "c\r\nX: y"}) {
        EXPECT_EQ(Resolved("http://a/b", reference), "35752") << reference;
    }
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

TEST(HttpAddress, ColonsOfAHostStandInBracketsOnly) {
    for (const char* url : {"ee::04/x", "//ee::04:443/x", "a:b:80/", "[::1/", "::1]/", "[::1]a/",
                            "a[::1]/", "[]/", "[[::1]]:80/"}) {
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
