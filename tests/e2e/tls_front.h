#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace swiftpatch::e2e {

/// A server on this machine that speaks TLS in front of one that does not, for as long as this
/// lives.
class TlsFront {
public:
    /// Shows `certificate` (tests/tls/certificates) and passes on to `port`.
    TlsFront(std::uint16_t port, const std::string& certificate);
    ~TlsFront();
    TlsFront(const TlsFront&) = delete;
    TlsFront& operator=(const TlsFront&) = delete;

    /// "localhost:port"
    std::string Host() const { return "localhost:" + port_; }

private:
    std::filesystem::path file_;  ///< Holds the port; the server ends when it has gone.
    std::string port_;
};

/// Lets the system trust the authority of our own, from now on.
void TrustOwnAuthority();

}  // namespace swiftpatch::e2e
