// What a callback of the http library becomes, without any request.
#include "runtime/win32/inet_exchange.h"

#include <gtest/gtest.h>

#include <vector>

#include "runtime/inet.h"

namespace swiftpatch {
namespace {

struct Posted {
    UINT message;
    WPARAM number;
    LPARAM value;
    bool operator==(const Posted&) const = default;
};

class InetExchange : public testing::Test {
protected:
    static constexpr DWORD kNumber = 7;

    ~InetExchange() override {
        exchange_.Release();
        exchange_.Release();
    }

    void CallBack(DWORD status) {
        OnInternetStatus(nullptr, reinterpret_cast<DWORD_PTR>(&exchange_), status, nullptr, 0);
    }

    /// What has been posted to the window since the last time.
    std::vector<Posted> Take() {
        std::vector<Posted> posted;
        MSG message;
        while (::PeekMessageA(&message, window_.Get(), WM_APP, 0xBFFF, PM_REMOVE)) {
            posted.push_back({message.message, message.wParam, message.lParam});
        }
        return posted;
    }

    UniqueWindow window_{::CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                           nullptr, nullptr)};
    Exchange& exchange_ = *new Exchange(window_.Get(), kNumber);
};

TEST_F(InetExchange, StatusThatIsAStateIsPostedAsOne) {
    CallBack(INTERNET_STATUS_CONNECTING_TO_SERVER);
    EXPECT_EQ(Take(),
              (std::vector<Posted>{{Exchange::kStateMessage, kNumber, inet_state::kConnecting}}));
}

TEST_F(InetExchange, OtherStatusesArePassedOver) {
    CallBack(INTERNET_STATUS_HANDLE_CREATED);
    CallBack(INTERNET_STATUS_INTERMEDIATE_RESPONSE);
    EXPECT_EQ(Take(), std::vector<Posted>{});
}

TEST_F(InetExchange, SearchForAProxyIsWork) {
    CallBack(INTERNET_STATUS_DETECTING_PROXY);
    EXPECT_EQ(Take(), (std::vector<Posted>{{Exchange::kWorkMessage, kNumber, 0}}));
}

TEST_F(InetExchange, HushedStatesAreNotPosted) {
    exchange_.HushStates();
    CallBack(INTERNET_STATUS_CONNECTING_TO_SERVER);
    EXPECT_EQ(Take(), std::vector<Posted>{});
}

}  // namespace
}  // namespace swiftpatch
