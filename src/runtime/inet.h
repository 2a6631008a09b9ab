#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "runtime/bytes.h"
#include "runtime/component.h"

namespace swiftpatch {

/// The states of a transfer, as StateChanged reports them.
namespace inet_state {
inline constexpr int kResolvingHost = 1;
inline constexpr int kHostResolved = 2;
inline constexpr int kConnecting = 3;
inline constexpr int kConnected = 4;
inline constexpr int kRequesting = 5;
inline constexpr int kRequestSent = 6;
inline constexpr int kReceivingResponse = 7;
inline constexpr int kResponseReceived = 8;
inline constexpr int kDisconnecting = 9;
inline constexpr int kDisconnected = 10;
inline constexpr int kError = 11;
inline constexpr int kResponseCompleted = 12;
}  // namespace inet_state

/// Why a request came to nothing, where the platform says more than that.
enum class TransferFault {
    kNone,
    kCertificateExpired,    ///< Or not valid yet.
    kCertificateName,       ///< Issued to another server.
    kCertificateAuthority,  ///< Issued by somebody whom the system does not trust.
    kCertificateRevoked,
    kCertificateUnchecked,  ///< The system could not find out whether it is revoked.
    kCertificateInvalid,    ///< In another way.
    kSecureChannel,         ///< No protocol or cipher that both sides speak.
    kUnprotectedRedirect,   ///< https was redirected to http.
    kProxyLogon,            ///< The proxy wants a logon that the system does not have (407).
};

class InetTransport;
class RedirectChain;

/// The transfer control: one HTTP request at a time, without blocking (RFC 9110, GET and HEAD), on
/// https with certificates as the system trusts them. Redirects (RFC 9110 section 15.4) are
/// followed, ten at most, never from https to http.
/// Everything happens on the user-interface thread; states are delivered from inside pumps.
class Inet {
public:
    explicit Inet(std::string name);
    ~Inet();
    Inet(const Inet&) = delete;
    Inet& operator=(const Inet&) = delete;

    /// Raised with one of inet_state. After state 11 or 12 no further state of that request comes.
    std::function<void(int state)> StateChanged;

    /// Seconds without a byte and without a state after which a request counts as timed out. States
    /// of further attempts to connect do not count, so that a host that is down is given up in
    /// time.
    std::int32_t RequestTimeout = 60;

    const std::string& Name() const { return name_; }

    /// Forgets headers, answer and options of the request before, so that none carries over.
    void ResetRequest();

    /// Starts `verb` ("GET" or "HEAD") on `url`; an address without a scheme counts as http.
    /// "QUIT" closes the session: what is left of the last answer is dropped, without traffic.
    /// Raises 35764 while executing, 35752 for an address that is neither http nor https.
    void Execute(const std::string& url, const std::string& verb);

    /// True from Execute until the step that delivers state 11 or 12.
    bool StillExecuting() const { return executing_; }

    /// All headers of the answer as they came; empty without an answer.
    const std::string& GetHeader() const { return headers_; }
    /// The value of one header, its name matched without regard to case; empty when absent.
    std::string GetHeader(const std::string& name) const;

    /// The answer's status code, or the number of the error of state 11.
    std::int32_t ResponseCode() const { return responseCode_; }

    /// What was wrong with the last request, if that is known.
    TransferFault Fault() const { return fault_; }

    /// Where the last request went in the end, and whether a redirect led there.
    std::string Address() const;
    bool Redirected() const;

    /// The next bytes of the body, `size` at most; empty at its end. Pumps while none is there.
    /// Raises 35758 when the transfer times out or its connection is lost, which includes a body
    /// that ends before its Content-length (RFC 9110 section 8.6), and 35756 when it was cancelled.
    Bytes GetChunk(std::size_t size);

    /// Ends the request, if one runs. Safe at any moment, also inside a notification or GetChunk.
    void Cancel();

    // What the platform's transport reports, on the user-interface thread. `request` is the number
    // that Open was called with; reports of another request than the present one are dropped.
    void OnState(std::uint32_t request, int state);
    /// The platform is at work for the request, in a way that no state stands for.
    void OnWork(std::uint32_t request);
    void OnAnswer(std::uint32_t request, std::int32_t status, std::string headers);
    /// An empty block is the end of the body.
    void OnBlock(std::uint32_t request, Bytes block);
    void OnFailed(std::uint32_t request, std::int32_t errorNumber,
                  TransferFault fault = TransferFault::kNone);
    /// To be called at least twice a second while a request is open, for the time-out.
    void OnClock();

private:
    bool IsPresent(std::uint32_t request) const { return open_ && request == request_; }
    bool IsProgress(int state);
    void Touch();
    bool TimedOut() const;
    void Notify(int state);
    void Finish(int state);
    void Open();
    bool Follow(std::int32_t status, const std::string& headers);
    void FailWith(std::int32_t errorNumber);
    void EndBody();
    void ReadAhead();
    void AskForBlock();
    void Accept(Bytes block);
    Bytes TakeBytes(std::size_t count);
    Bytes TakePart(std::size_t most);
    void CloseTransport();
    void CloseRequest();

    std::string name_;
    std::unique_ptr<InetTransport> transport_;
    std::uint32_t request_ = 0;
    bool open_ = false;  ///< The transport has a request of ours.
    bool executing_ = false;
    bool body_ = false;     ///< The answer is in and its body is being read.
    bool reading_ = false;  ///< A block has been asked for.
    bool ended_ = false;    ///< The whole body has come in.
    std::string verb_;
    std::unique_ptr<RedirectChain> chain_;  ///< Of the last request.
    TransferFault fault_ = TransferFault::kNone;
    std::int32_t failure_ = 0;
    std::int32_t responseCode_ = 0;
    std::uint32_t lastSign_ = 0;
    int attempt_ = 0;  ///< The furthest state since the server was heard of, if it has not been.
    std::string headers_;
    std::deque<Bytes> blocks_;  ///< What was not handed out yet.
    std::size_t held_ = 0;      ///< Bytes in them.
    std::uint64_t came_ = 0;    ///< Bytes of the body that came in so far.
};

}  // namespace swiftpatch
