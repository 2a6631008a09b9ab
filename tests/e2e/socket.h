#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "e2e/win32.h"

namespace swiftpatch::e2e {

/// Keeps the platform's sockets in use as long as it lives.
class SocketLibrary {
public:
    SocketLibrary();
    ~SocketLibrary();
    SocketLibrary(const SocketLibrary&) = delete;
    SocketLibrary& operator=(const SocketLibrary&) = delete;
};

/// Owns a socket.
class Socket {
public:
    explicit Socket(SOCKET handle = INVALID_SOCKET) : handle_(handle) {}
    ~Socket() { Close(); }
    Socket(Socket&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_SOCKET)) {}
    Socket& operator=(Socket&&) = delete;

    /// A socket bound to a free port of the loopback address 127.0.0.N, not yet listening.
    static Socket OnLoopback(int lastNumber = 1);

    SOCKET Get() const { return handle_; }
    std::uint16_t Port() const;

    /// True when something can be read, or a connection be accepted, within `milliseconds`.
    bool Readable(int milliseconds) const;
    /// What has come in; empty when the other side has closed or reset the connection.
    std::string Receive() const;
    /// True when something can be sent within `milliseconds`.
    bool Writable(int milliseconds) const;
    /// Sends what fits at the moment and returns how many bytes that was; empty when the other
    /// side no longer takes anything.
    std::optional<std::size_t> SendSome(std::string_view bytes) const;
    /// Makes sending return at once when nothing fits.
    void MakeNonBlocking() const;

    void Close();
    /// Closes so that the other side sees a reset.
    void Reset();

private:
    SOCKET handle_;
};

}  // namespace swiftpatch::e2e
