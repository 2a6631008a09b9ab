#include "runtime/internal/inet_transport.h"

#include <deque>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "runtime/events.h"
#include "runtime/inet.h"
#include "runtime/internal/http_address.h"
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
        kWaiting,   ///< For bytes of the body, its end or its failure.
    };

    explicit Request(Inet& itsOwner);
    ~Request();
    Request(const Request&) = delete;
    Request& operator=(const Request&) = delete;

    void Connect(const HttpAddress& address);
    void Send(std::uint32_t number, const HttpAddress& address, const std::string& verb);
    std::optional<Bytes> ReadBlock();
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
    void PassOnBody();
    void Gather();
    DWORD Read(std::span<char> target);
    void FailLater(DWORD error);
    bool HasBlock() const { return ended || held != 0; }
    Bytes TakeBlock();

    Inet& owner;
    UniqueWindow window;
    UniqueInternet session;
    UniqueInternet connection;
    std::string server;  ///< Host and port of the connection.
    UniqueInternet handle;
    Exchange* exchange = nullptr;
    Exchange::Block block;       ///< Where the platform puts the body's bytes.
    std::size_t held = 0;        ///< How many of them are there.
    std::deque<Report> reports;  ///< Those that came while events were held, in their order.
    Phase phase = Phase::kIdle;
    bool headersOnly = false;  ///< The answer has no body.
    bool wanted = false;       ///< A block has been asked for, and was not there.
    bool ended = false;
    DWORD failure = ERROR_SUCCESS;  ///< Of a read that nobody waited for.
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
    if (!window) {
        // Everything is heard of through it, the time-out included.
        throw RuntimeError(error_number::kRequestFailed);
    }
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

std::optional<Bytes> InetTransport::Request::ReadBlock() {
    Gather();
    if (HasBlock()) {
        return TakeBlock();
    }
    wanted = true;
    if (failure != ERROR_SUCCESS) {
        FailLater(failure);
    }
    return {};
}

void InetTransport::Request::Close() {
    ::KillTimer(window.Get(), kClockTimer);
    if (!ended && phase != Phase::kIdle && !headersOnly) {
        CloseUnread(handle.Release());
    }
    handle.Reset();
    phase = Phase::kIdle;
    wanted = ended = false;
    block.reset();
    held = 0;
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
    if (report.message == Exchange::kStateMessage) {
        owner.OnState(report.number, static_cast<int>(report.value));
    } else {
        OnCompleted(static_cast<DWORD>(report.value));
    }
}

void InetTransport::Request::OnCompleted(DWORD error) {
    const Phase before = std::exchange(phase, Phase::kAnswered);
    if (before == Phase::kSending) {
        OnAnswered(error);
    } else if (before == Phase::kWaiting) {
        failure = error;
        if (wanted) {
            PassOnBody();
        }
    }
}

void InetTransport::Request::PassOnBody() {
    const std::uint32_t number = exchange->Number();
    Gather();
    wanted = !HasBlock() && failure == ERROR_SUCCESS;
    if (HasBlock()) {
        owner.OnBlock(number, TakeBlock());
    } else if (!wanted) {
        owner.OnFailed(number, TransferErrorNumber(failure, true));
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
    if (!block) {
        block = exchange->FreeBlock();
    }
    while (phase == Phase::kAnswered && !ended && failure == ERROR_SUCCESS && held < kEnough) {
        held += Read({block.get() + held, Exchange::kBlockSize - held});
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
        FailLater(error);
    }
    return 0;
}

/// As if the platform had said so later: what came before goes first, and nobody who asks for a
/// block hears of its failure inside the question.
void InetTransport::Request::FailLater(DWORD error) {
    phase = Phase::kWaiting;
    exchange->Post(Exchange::kCompletedMessage, error);
}

/// Empty at the end of the body.
Bytes InetTransport::Request::TakeBlock() {
    return {std::exchange(block, nullptr), std::exchange(held, 0)};
}

InetTransport::InetTransport(Inet& owner)
    : owner_(owner), request_(std::make_shared<Request>(owner)) {}

InetTransport::~InetTransport() = default;

void InetTransport::Open(std::uint32_t request, const HttpAddress& address,
                         const std::string& verb) {
    request_->Send(request, address, verb);
}

std::optional<Bytes> InetTransport::ReadBlock() { return request_->ReadBlock(); }

void InetTransport::Close() { request_->Close(); }

}  // namespace swiftpatch
