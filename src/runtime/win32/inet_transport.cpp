// One request at a time over the platform's http library, which works on threads of its own.
//
// A transport keeps a hidden window, a session and the connection to the server asked last for as
// long as it lives, and a handle with its Exchange for as long as a request is open. The library's
// callbacks know only the Exchange, which posts numbered messages to the hidden window; everything
// here runs on the user-interface thread, inside whatever pump finds those messages. So no lock is
// needed, and a request can be closed at any moment, inside its own report too: what was posted of
// it before is dropped by its number.
//
// Calls that wait for their result would be simpler, but each would hold up all windows, and on a
// thread of our own everything above would be called from two sides. A report that comes
// while events are held stays here, behind those before it.
#include "runtime/internal/inet_transport.h"

#include <deque>
#include <functional>
#include <string>
#include <utility>

#include "runtime/events.h"
#include "runtime/inet.h"
#include "runtime/internal/http_address.h"
#include "runtime/runtime_error.h"
#include "runtime/win32/errors.h"
#include "runtime/win32/hidden_window.h"
#include "runtime/win32/inet_body.h"
#include "runtime/win32/inet_calls.h"
#include "runtime/win32/pump.h"

namespace swiftpatch {
namespace {

constexpr UINT_PTR kClockTimer = 1;
constexpr UINT kClockInterval = 250;
constexpr const char* kWindowClass = "SwiftPatchTransfer";

void Raise(const std::function<void()>& procedure) {
    if (!RunIsOver()) {
        RaiseEvent(procedure);
    }
}

HWND CreateTransferWindow(WNDPROC procedure) {
    WNDCLASSA transfer{};
    transfer.lpfnWndProc = procedure;
    transfer.hInstance = ::GetModuleHandleA(nullptr);
    transfer.lpszClassName = kWindowClass;
    ::RegisterClassA(&transfer);
    return CreateHiddenWindow(kWindowClass);
}

}  // namespace

/// The request under way, and what is kept from one to the next.
class InetTransport::Request {
public:
    explicit Request(Inet& owner);
    ~Request();
    Request(const Request&) = delete;
    Request& operator=(const Request&) = delete;

    void Send(std::uint32_t number, const HttpAddress& address, const std::string& verb);
    std::optional<Bytes> ReadBlock() { return body_->ReadBlock(); }
    void Close();

private:
    /// What a message of the transfer says: of which exchange, and what.
    struct Report {
        UINT message;
        WPARAM number;
        LPARAM value;
    };

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    void Start();
    void Connect();
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void PassOnReports();
    void PassOn(const Report& report);
    void OnAnswered(DWORD error);
    void LogOnToProxy();
    void PassOnBody(DWORD error);

    Inet& owner_;
    UniqueWindow window_;
    UniqueInternet session_;
    UniqueInternet connection_;
    std::string server_;          ///< Host and port of the connection.
    Logon logon_ = Logon::kNone;  ///< kProxy once a proxy has asked for one.
    std::uint32_t number_ = 0;    ///< The owner's, of the request.
    DWORD exchanges_ = 0;         ///< Up to now: each has a number of its own.
    HttpAddress address_;
    std::string verb_;
    UniqueInternet handle_;
    Exchange* exchange_ = nullptr;
    std::optional<InetBody> body_;  ///< Once the request has been answered.
    std::deque<Report> reports_;    ///< Those that came while events were held, in their order.
};

InetTransport::Request::Request(Inet& owner)
    : owner_(owner), window_(CreateTransferWindow(Procedure)), session_(OpenSession()) {
    ::SetWindowLongA(window_.Get(), GWL_USERDATA, reinterpret_cast<LONG>(this));
}

InetTransport::Request::~Request() {
    Close();
    ::SetWindowLongA(window_.Get(), GWL_USERDATA, 0);
}

void InetTransport::Request::Send(std::uint32_t number, const HttpAddress& address,
                                  const std::string& verb) {
    Close();
    if (!window_) {
        // Everything is heard of through it, the time-out included.
        throw RuntimeError(error_number::kRequestFailed);
    }
    number_ = number;
    address_ = address;
    verb_ = verb;
    Start();
}

void InetTransport::Request::Start() {
    Connect();
    exchange_ = new Exchange(window_.Get(), ++exchanges_);
    handle_.Reset(OpenRequest(connection_.Get(), verb_, address_, logon_, *exchange_));
    if (!handle_) {
        exchange_->Release();  // For the handle that never was.
        Close();
        throw RuntimeError(error_number::kRequestFailed);
    }
    ::SetTimer(window_.Get(), kClockTimer, kClockInterval, nullptr);
    const BOOL done = WinInet().HttpSendRequestA(handle_.Get(), nullptr, 0, nullptr, 0);
    const DWORD error = done ? ERROR_SUCCESS : ::GetLastError();
    if (error != ERROR_IO_PENDING) {
        exchange_->Post(Exchange::kCompletedMessage, error);
    }
}

void InetTransport::Request::Connect() {
    const std::string wanted = address_.host + ":" + std::to_string(address_.port);
    if (!connection_ || server_ != wanted) {
        connection_.Reset(OpenConnection(session_.Get(), address_, logon_));
        server_ = wanted;
    }
}

void InetTransport::Request::Close() {
    ::KillTimer(window_.Get(), kClockTimer);
    const bool read = verb_ == "HEAD" || (body_ && body_->AtEnd());
    if (handle_ && !read) {
        CloseUnread(handle_.Release());
    }
    handle_.Reset();
    body_.reset();
    if (exchange_ != nullptr) {
        std::exchange(exchange_, nullptr)->Release();
    }
}

LRESULT CALLBACK InetTransport::Request::Procedure(HWND window, UINT message, WPARAM wParam,
                                                   LPARAM lParam) {
    return Guarded([=] {
        auto* const request = reinterpret_cast<Request*>(::GetWindowLongA(window, GWL_USERDATA));
        return request == nullptr ? ::DefWindowProcA(window, message, wParam, lParam)
                                  : request->OnMessage(message, wParam, lParam);
    });
}

LRESULT InetTransport::Request::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_TIMER:
            PassOnReports();
            Raise([this] { owner_.OnClock(); });
            return 0;
        case Exchange::kStateMessage:
        case Exchange::kCompletedMessage:
        case Exchange::kWorkMessage:
            reports_.push_back({message, wParam, lParam});
            PassOnReports();
            return 0;
        case WM_CLOSE:
            // What ends tasks tells all windows of the program to close. This one has to stay: the
            // user may say No, and the transfer then goes on.
            return 0;
        default:
            return ::DefWindowProcA(window_.Get(), message, wParam, lParam);
    }
}

/// Reports that were held go first. The clock's next tick comes back to what is held now.
void InetTransport::Request::PassOnReports() {
    while (!reports_.empty() && !EventsAreHeld()) {
        const Report report = reports_.front();
        reports_.pop_front();
        Raise([&] { PassOn(report); });
    }
}

void InetTransport::Request::PassOn(const Report& report) {
    // What is left of an exchange that was replaced or closed is dropped by its number.
    if (exchange_ == nullptr || exchange_->Number() != report.number) {
        return;
    }
    if (report.message == Exchange::kStateMessage) {
        owner_.OnState(number_, static_cast<int>(report.value));
    } else if (report.message == Exchange::kWorkMessage) {
        owner_.OnWork(number_);
    } else if (body_) {
        PassOnBody(static_cast<DWORD>(report.value));
    } else {
        OnAnswered(static_cast<DWORD>(report.value));
    }
}

void InetTransport::Request::OnAnswered(DWORD error) {
    body_.emplace(handle_.Get(), *exchange_);
    const std::int32_t status = error == ERROR_SUCCESS ? StatusCode(handle_.Get()) : 0;
    if (status == 0) {
        // A connection that is lost before the answer is a success to some platforms.
        owner_.OnFailed(number_, TransferErrorNumber(error, false), TransferFaultOf(error));
    } else if (logon_ == Logon::kNone && IsProxyAskingForLogon(handle_.Get())) {
        LogOnToProxy();
    } else {
        exchange_->HushStates();
        owner_.OnAnswer(number_, status, RawHeaders(handle_.Get()));
    }
}

/// Only where a proxy asks for it, and from then on: a system that may log on to the proxy needs to
/// be kept from logging on to the server.
void InetTransport::Request::LogOnToProxy() {
    Close();
    logon_ = Logon::kProxy;
    connection_.Reset();
    try {
        Start();
    } catch (const RuntimeError& error) {
        owner_.OnFailed(number_, error.Number());
    }
}

void InetTransport::Request::PassOnBody(DWORD error) {
    InetBody::News news = body_->OnCompleted(error);
    if (news.block) {
        owner_.OnBlock(number_, *std::move(news.block));
    } else if (news.failure != ERROR_SUCCESS) {
        owner_.OnFailed(number_, TransferErrorNumber(news.failure, true));
    }
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
