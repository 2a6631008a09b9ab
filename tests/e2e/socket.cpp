#include "e2e/socket.h"

#include <ws2tcpip.h>

#include <array>

#include "e2e/drive_error.h"

namespace swiftpatch::e2e {
namespace {

sockaddr* Plain(sockaddr_in& address) {
    void* untyped = &address;
    return static_cast<sockaddr*>(untyped);
}

bool Poll(SOCKET handle, SHORT events, int milliseconds) {
    WSAPOLLFD wanted = {};
    wanted.fd = handle;
    wanted.events = events;
    return WSAPoll(&wanted, 1, milliseconds) > 0;
}

}  // namespace

SocketLibrary::SocketLibrary() {
    WSADATA data;
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0) {
        throw DriveError("the socket library does not start");
    }
}

SocketLibrary::~SocketLibrary() { WSACleanup(); }

Socket Socket::OnLoopback(int lastNumber) {
    Socket made(::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(0x7F000000U + static_cast<u_long>(lastNumber));
    if (made.handle_ == INVALID_SOCKET ||
        ::bind(made.handle_, Plain(address), sizeof address) != 0) {
        throw DriveError("no port of the loopback address can be had");
    }
    return made;
}

std::uint16_t Socket::Port() const {
    sockaddr_in address = {};
    int size = sizeof address;
    ::getsockname(handle_, Plain(address), &size);
    return ntohs(address.sin_port);
}

bool Socket::Readable(int milliseconds) const { return Poll(handle_, POLLRDNORM, milliseconds); }

std::string Socket::Receive() const {
    std::array<char, 4096> buffer;
    const int count = ::recv(handle_, buffer.data(), static_cast<int>(buffer.size()), 0);
    return count > 0 ? std::string(buffer.data(), static_cast<std::size_t>(count)) : std::string();
}

bool Socket::Writable(int milliseconds) const { return Poll(handle_, POLLWRNORM, milliseconds); }

std::optional<std::size_t> Socket::SendSome(std::string_view bytes) const {
    const int count = ::send(handle_, bytes.data(), static_cast<int>(bytes.size()), 0);
    if (count >= 0) {
        return static_cast<std::size_t>(count);
    }
    return WSAGetLastError() == WSAEWOULDBLOCK ? std::optional<std::size_t>(0) : std::nullopt;
}

void Socket::MakeNonBlocking() const {
    u_long on = 1;
    ::ioctlsocket(handle_, static_cast<long>(FIONBIO), &on);
}

void Socket::Close() {
    if (handle_ != INVALID_SOCKET) {
        ::closesocket(std::exchange(handle_, INVALID_SOCKET));
    }
}

void Socket::Reset() {
    linger atOnce = {};
    atOnce.l_onoff = 1;
    const void* untyped = &atOnce;
    ::setsockopt(handle_, SOL_SOCKET, SO_LINGER, static_cast<const char*>(untyped), sizeof atOnce);
    Close();
}

}  // namespace swiftpatch::e2e
