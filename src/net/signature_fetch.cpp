#include <utility>

#include "mainwindow/frmSwiftPatch.h"
#include "shared/paths.h"
#include "shared/shared_state.h"

namespace swiftpatch {
namespace {

constexpr std::int32_t kOk = 200;  // RFC 9110 section 15.3.1.

}  // namespace

/// False when the connection was lost, which has been said then. A Retry that was pressed meanwhile
/// has made a request of its own; its answer is not taken for that of this one.
bool frmSwiftPatch::FetchSignature() {
    const DownloadMode mode = std::exchange(downloadMode, DownloadMode::kSignature);
    const std::int32_t mine = ++signatureRequests_;
    Request(shared.ServerDownloadPath + kBuildSignature);
    WaitUntilIdle();
    downloadMode = mode;
    return signatureRequests_ == mine && signatureReceived_ == mine;
}

/// Kept in memory only. Any other answer than a short one that says that all is well is no
/// signature.
void frmSwiftPatch::ReceiveSignature() {
    constexpr std::size_t kMost = kLongestSignatureFile + 1;
    std::string file;
    bool done = Inet1.ResponseCode() != kOk;
    while (!done) {
        const Bytes chunk = Inet1.GetChunk(kMost - file.size());
        file += chunk.View();
        done = chunk.empty() || file.size() == kMost;
    }
    Inet1.Cancel();
    signature.Take(file);
    signatureReceived_ = signatureRequests_;
}

}  // namespace swiftpatch
