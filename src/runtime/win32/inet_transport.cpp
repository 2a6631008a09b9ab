#include "runtime/inet_transport.h"

#include <deque>
#include <functional>
#include <span>
#include <string>
#include <utility>

#include "runtime/events.h"
#include "runtime/inet.h"
#include "runtime/runtime_error.h"
#include "runtime/win32/errors.h"
#include "runtime/win32/inet_calls.h"
#include "runtime/win32/pump.h"

namespace swiftpatch {
namespace {

/// A block that holds this much is handed over without a further read.
constexpr std::size_t kEnough = Exchange::kBlockSize / 2;
constexpr UINT_PTR kClockTimer = 1;
constexpr UINT kClockInterval = 250;
constexpr const char* kWindowClass = "SwiftPatchTransfer";

}  // namespace

/// What the platform keeps for a transport: the window that is told, the connection to the server
/// asked last, and the request under way.
struct InetTransport::Request {
    enum class Phase {
        kIdle,
        kSending,
        kAnswered,  ///< The body can be read.
        kWaiting,   ///< For bytes of the body, or its end.
    };

    explicit Request(Inet& itsOwner);
    ~Request();
    Request(const Request&) = delete;
    Request& operator=(const Request&) = delete;

    void Connect(const HttpAddress& address);
    void Send(std::uint32_t number, const HttpAddress& address, const std::string& verb);
    void ReadBlock();
    void Close();

    /// What a message of the transfer says: of which request, and what.
    struct Report {
        UINT message;
        WPARAM number;
        LPARAM value;
    };

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void PassOnReports();
    void PassOn(const Report& report);
    void OnCompleted(DWORD error);
    void OnAnswered(DWORD error);
    void Gather();
    DWORD Read(std::span<char> target);
    bool HasEnd() const { return ended || failure != ERROR_SUCCESS; }
    bool HasResult() const { return HasEnd() || exchange->held != 0; }
    void Deliver();

    Inet& owner;
    UniqueWindow window;
    UniqueInternet session;
    UniqueInternet connection;
    std::string server;  ///< Host and port of the connection.
    UniqueInternet handle;
    Exchange* exchange = nullptr;
    std::deque<Report> reports;  ///< Those that came while events were held, in their order.
    Phase phase = Phase::kIdle;
    bool headersOnly = false;  ///< The answer has no body.
    bool wanted = false;       ///< A block has been asked for.
    bool posted = false;       ///< A block is complete, and a message says so.
    bool ended = false;
    DWORD failure = ERROR_SUCCESS;
};

namespace {

void Raise(const std::function<void()>& procedure) {
    if (!RunIsOver()) {
        RaiseEvent(procedure);
    }
}

LRESULT CALLBACK TransferProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return Guarded([=] {
        auto* const request =
            reinterpret_cast<InetTransport::Request*>(::GetWindowLongA(window, GWL_USERDATA));
        return request == nullptr ? ::DefWindowProcA(window, message, wParam, lParam)
                                  : request->OnMessage(message, wParam, lParam);
    });
}

/// An ordinary window that is never shown: Windows 95 has no windows for messages alone.
HWND CreateTransferWindow() {
    WNDCLASSA transfer{};
    transfer.lpfnWndProc = TransferProcedure;
    transfer.hInstance = ::GetModuleHandleA(nullptr);
    transfer.lpszClassName = kWindowClass;
    ::RegisterClassA(&transfer);
    return ::CreateWindowExA(0, kWindowClass, "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                             transfer.hInstance, nullptr);
}

}  // namespace

InetTransport::Request::Request(Inet& itsOwner)
    : owner(itsOwner), window(CreateTransferWindow()), session(OpenSession()) {
    ::SetWindowLongA(window.Get(), GWL_USERDATA, reinterpret_cast<LONG>(this));
}

InetTransport::Request::~Request() {
    Close();
    ::SetWindowLongA(window.Get(), GWL_USERDATA, 0);
}

void InetTransport::Request::Connect(const HttpAddress& address) {
    const std::string wantedServer = address.host + ":" + std::to_string(address.port);
    if (!connection || server != wantedServer) {
        connection.Reset(WinInet().InternetConnectA(session.Get(), address.host.c_str(),
                                                    address.port, nullptr, nullptr,
                                                    INTERNET_SERVICE_HTTP, 0, 0));
        server = wantedServer;
    }
}

void InetTransport::Request::Send(std::uint32_t number, const HttpAddress& address,
                                  const std::string& verb) {
    Close();
    Connect(address);
    exchange = new Exchange(window.Get(), number);
    handle.Reset(OpenRequest(connection.Get(), verb, address.path, *exchange));
    if (!handle) {
        exchange->Release();  // For the handle that never was.
        Close();
        throw RuntimeError(error_number::kRequestFailed);
    }
    phase = Phase::kSending;
    headersOnly = verb == "HEAD";
    ::SetTimer(window.Get(), kClockTimer, kClockInterval, nullptr);
    const BOOL done = WinInet().HttpSendRequestA(handle.Get(), nullptr, 0, nullptr, 0);
    const DWORD error = done ? ERROR_SUCCESS : ::GetLastError();
    if (error != ERROR_IO_PENDING) {
        exchange->Post(Exchange::kCompletedMessage, error);
    }
}

void InetTransport::Request::ReadBlock() {
    wanted = true;
    if (phase == Phase::kAnswered) {
        Gather();
        if (HasResult() && !posted) {
            posted = true;
            exchange->Post(Exchange::kBlockMessage, 0);
        }
    }
}

void InetTransport::Request::Close() {
    ::KillTimer(window.Get(), kClockTimer);
    if (!ended && phase != Phase::kIdle && !headersOnly) {
        CloseUnread(handle.Release());
    }
    handle.Reset();
    phase = Phase::kIdle;
    wanted = posted = ended = false;
    failure = ERROR_SUCCESS;
    if (exchange != nullptr) {
        std::exchange(exchange, nullptr)->Release();
    }
}

LRESULT InetTransport::Request::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_TIMER:
            PassOnReports();
            Raise([this] { owner.OnClock(); });
            return 0;
        case Exchange::kStateMessage:
        case Exchange::kCompletedMessage:
        case Exchange::kBlockMessage:
            reports.push_back({message, wParam, lParam});
            PassOnReports();
            return 0;
        default:
            return ::DefWindowProcA(window.Get(), message, wParam, lParam);
    }
}

/// Reports that were held go first. The clock's next tick comes back to what is held now.
void InetTransport::Request::PassOnReports() {
    while (!reports.empty() && !EventsAreHeld()) {
        const Report report = reports.front();
        reports.pop_front();
        Raise([&] { PassOn(report); });
    }
}

void InetTransport::Request::PassOn(const Report& report) {
    // What is left of a request that was replaced or closed is dropped by its number.
    if (exchange == nullptr || exchange->Number() != report.number) {
        return;
    }
    switch (report.message) {
        case Exchange::kStateMessage:
            owner.OnState(report.number, static_cast<int>(report.value));
            break;
        case Exchange::kCompletedMessage:
            OnCompleted(static_cast<DWORD>(report.value));
            break;
        default:
            Deliver();
            break;
    }
}

void InetTransport::Request::OnCompleted(DWORD error) {
    const Phase before = std::exchange(phase, Phase::kAnswered);
    if (before == Phase::kSending) {
        OnAnswered(error);
    } else if (before == Phase::kWaiting) {
        failure = error;
        if (wanted && !posted) {
            Gather();
            Deliver();
        }
    }
}

void InetTransport::Request::OnAnswered(DWORD error) {
    const std::uint32_t number = exchange->Number();
    if (exchange->Redirected()) {
        // Some platforms' connection handle now stands for the server of the other address.
        server.clear();
    }
    if (error != ERROR_SUCCESS) {
        owner.OnFailed(number, TransferErrorNumber(error, false));
        return;
    }
    exchange->HushStates();
    owner.OnAnswer(number, StatusCode(handle.Get()), RawHeaders(handle.Get()));
}

/// Takes what has come in, until it is enough or more has yet to be announced.
void InetTransport::Request::Gather() {
    if (!exchange->block) {
        exchange->block = std::make_unique_for_overwrite<char[]>(Exchange::kBlockSize);
    }
    while (phase == Phase::kAnswered && !HasEnd() && exchange->held < kEnough) {
        exchange->held +=
            Read({exchange->block.get() + exchange->held, Exchange::kBlockSize - exchange->held});
    }
}

/// Takes what is there without waiting. A read that has to wait takes nothing either: the platform
/// then says when to try again and leaves the buffer alone. (Asking first how much is there takes
/// twice as long, in steps of 8 KiB; a read that fills its buffer holds back what trickles in.)
DWORD InetTransport::Request::Read(std::span<char> target) {
    INTERNET_BUFFERSA buffers{};
    buffers.dwStructSize = sizeof(buffers);
    buffers.lpvBuffer = target.data();
    buffers.dwBufferLength = static_cast<DWORD>(target.size());
    if (WinInet().InternetReadFileExA(handle.Get(), &buffers, IRF_ASYNC | IRF_NO_WAIT,
                                      reinterpret_cast<DWORD_PTR>(exchange))) {
        ended = buffers.dwBufferLength == 0;
        return buffers.dwBufferLength;
    }
    const DWORD error = ::GetLastError();
    if (error == ERROR_IO_PENDING) {
        phase = Phase::kWaiting;
    } else {
        failure = error;
    }
    return 0;
}

void InetTransport::Request::Deliver() {
    posted = false;
    if (!wanted || !HasResult()) {
        return;
    }
    wanted = false;
    const std::uint32_t number = exchange->Number();
    // Bytes come first, then what ended them.
    if (exchange->held == 0 && failure != ERROR_SUCCESS) {
        owner.OnFailed(number, TransferErrorNumber(failure, true));
    } else {
        const std::size_t count = std::exchange(exchange->held, 0);
        owner.OnBlock(number, std::string(exchange->block.get(), count));
    }
}

InetTransport::InetTransport(Inet& owner)
    : owner_(owner), request_(std::make_shared<Request>(owner)) {}

InetTransport::~InetTransport() = default;

void InetTransport::Open(std::uint32_t request, const HttpAddress& address,
                         const std::string& verb) {
    request_->Send(request, address, verb);
}

void InetTransport::ReadBlock() { request_->ReadBlock(); }

void InetTransport::Close() { request_->Close(); }

}  // namespace swiftpatch
