// What comes of it when all windows of the program are told to close at once, the hidden ones too.
#include <algorithm>

#include "e2e/update_run.h"
#include "e2e/win32.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kSoon{10000};

/// Where the run is when its windows are told to close.
struct Moment {
    const char* name;
    std::size_t request;  ///< The one whose answer takes seconds.
};

void PrintTo(const Moment& moment, std::ostream* out) { *out << moment.name; }

constexpr std::size_t kConnectivity = 1;
constexpr std::size_t kSizeProbe = 2;
constexpr std::size_t kDateProbe = 3;
constexpr std::size_t kGet = 4;
constexpr std::size_t kBody = 5;  ///< The same as kGet, but its body takes as long.

class CloseAllWindows : public UpdateRun, public ::testing::WithParamInterface<Moment> {
protected:
    /// Goes on to the moment and tells all windows to close.
    void CloseAllAtTheMoment() {
        PublishSlowly();
        Install("3.0.11.0");
        StartToMainWindow();
        if (GetParam().request >= kGet) {
            AnswerMissingBuildBox();
        }
        Await(
            "the request", [this] { return server_.Requests().size() >= SlowRequest(); }, kSoon);
        if (GetParam().request == kBody) {
            AwaitPercentage(10);
        }
        SwitchOffStart();
        updater_->CloseAllWindows();
    }

    void AnswerQuestion(int button) {
        AnswerBox("Download not finished.... \r\n\r\nAre you sure you want to exit this program?",
                  button, "Confirm Exit");
    }

private:
    std::size_t SlowRequest() const { return std::min(GetParam().request, kGet); }

    void PublishSlowly() {
        const Reply quick = BuildReply("3.0.12.5");
        Reply slow = quick;
        if (GetParam().request == kBody) {
            slow.bytesPerSecond = slow.body.Size() / 4;
        } else {
            slow.delay = seconds(4);
        }
        Publish(quick);
        for (std::size_t request = kConnectivity; request <= kGet; ++request) {
            server_.Once(request == kGet ? "GET" : "HEAD", kBuildTarget,
                         request == SlowRequest() ? slow : quick);
        }
    }
};

TEST_P(CloseAllWindows, NoLetsTheDownloadGoOnToItsEnd) {
    CloseAllAtTheMoment();
    AnswerQuestion(IDNO);
    if (GetParam().request < kGet) {
        AnswerMissingBuildBox();
    }
    AwaitOffer();
    Close();
    EXPECT_EQ(folder_->Read("tolvex30.exe"), Build("3.0.12.5"));
}

TEST_P(CloseAllWindows, YesEndsTheProgram) {
    CloseAllAtTheMoment();
    AnswerQuestion(IDYES);
    updater_->AwaitEnd(kSoon);
    ExpectNothingStarted();
}

INSTANTIATE_TEST_SUITE_P(, CloseAllWindows,
                         ::testing::Values(Moment{"InTheConnectivityCheck", kConnectivity},
                                           Moment{"InTheProbeOfTheSize", kSizeProbe},
                                           Moment{"InTheProbeOfTheDate", kDateProbe},
                                           Moment{"BeforeTheAnswer", kGet},
                                           Moment{"InTheBody", kBody}),
                         [](const auto& parameter) { return parameter.param.name; });

}  // namespace
}  // namespace swiftpatch::e2e
