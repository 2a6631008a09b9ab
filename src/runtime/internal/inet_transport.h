#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "runtime/bytes.h"

namespace swiftpatch {

class Inet;
struct HttpAddress;

/// How the platform carries one request at a time for an Inet. Reports come to the Inet on the
/// user-interface thread, from inside pumps and never from inside these calls.
class InetTransport {
public:
    explicit InetTransport(Inet& owner);
    ~InetTransport();
    InetTransport(const InetTransport&) = delete;
    InetTransport& operator=(const InetTransport&) = delete;

    /// Sends `verb` to `address`, past every cache, without cookies, on the connection of the
    /// request before where the server kept it open. Follows no redirect. Reports states, then
    /// OnAnswer or OnFailed.
    /// Raises 35756 when it cannot even be started.
    void Open(std::uint32_t request, const HttpAddress& address, const std::string& verb);

    /// The next block of the body where it has come in already, empty at the end of the body.
    /// Otherwise OnBlock or OnFailed answers.
    std::optional<Bytes> ReadBlock();

    /// Ends the present request; nothing of it is reported any more. Calls OnClock no longer.
    void Close();

private:
    class Request;

    Inet& owner_;
    std::shared_ptr<Request> request_;
};

}  // namespace swiftpatch
