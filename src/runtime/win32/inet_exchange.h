#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "runtime/win32/wininet.h"

namespace swiftpatch {

/// One request as the platform's own threads see it. Their callbacks do nothing but post numbered
/// messages to a window of the user-interface thread.
///
/// It has two owners, the transport and the request's handle, and goes with the second of them:
/// the platform can use it until it says that the handle is closed, which may be after
/// InternetCloseHandle has returned.
class Exchange {
public:
    /// wParam is the exchange's number. lParam: one of inet_state.
    static constexpr UINT kStateMessage = WM_APP + 1;
    /// Posted by the transport to itself too. lParam: an error of the system, or 0.
    static constexpr UINT kCompletedMessage = WM_APP + 2;
    /// The platform does something that no state stands for.
    static constexpr UINT kWorkMessage = WM_APP + 3;

    Exchange(HWND window, DWORD number) : window_(window), number_(number) {}
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    DWORD Number() const { return number_; }
    void Post(UINT message, DWORD value) const;
    /// From now on only what completes is reported.
    void HushStates() { ::InterlockedExchange(&hushed_, 1); }
    bool Hushed() { return ::InterlockedExchangeAdd(&hushed_, 0) != 0; }

    void Release();

    /// What a read tells the platform, and what it learns. It is here because a read may be under
    /// way still when the one who started it has gone.
    INTERNET_BUFFERSA& ReadRecord() { return readRecord_; }

    static constexpr std::size_t kBlockSize = 256 * 1024;
    using Block = std::shared_ptr<char[]>;
    /// Memory for the body's bytes that nobody else holds. It comes back by itself when nobody
    /// does any more, because fetching it anew for each block costs more than filling it.
    Block FreeBlock();

private:
    ~Exchange() = default;

    const HWND window_;
    const DWORD number_;
    LONG hushed_ = 0;
    LONG owners_ = 2;
    INTERNET_BUFFERSA readRecord_{};
    std::vector<Block> blocks_;
};

/// The platform's callback; its context is an Exchange.
void CALLBACK OnInternetStatus(HINTERNET handle, DWORD_PTR context, DWORD status, void* detail,
                               DWORD size);

}  // namespace swiftpatch
