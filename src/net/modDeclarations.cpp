#include "net/modDeclarations.h"

#include "mainwindow/frmSwiftPatch.h"
#include "net/header_probe.h"
#include "runtime/strings.h"
#include "runtime/system.h"
#include "shared/error_report.h"
#include "shared/paths.h"

namespace swiftpatch {
namespace {

constexpr std::size_t kNameLength = 512;
constexpr std::uint32_t kRasInstalled = 0x20;  // INTERNET_RAS_INSTALLED

// E_FAIL and DB_SEC_E_AUTH_FAILED: failures that mean no connection and are not worth a box.
constexpr std::int32_t kUnspecifiedFailure = -2147467259;
constexpr std::int32_t kAuthenticationFailure = -2147217843;

/// The inversion is deliberate: a machine that reports a remote-access service as installed counts
/// as not connected.
bool SystemIsConnected() {
    std::uint32_t flags = 0;
    std::string name(kNameLength, '\0');
    return InternetGetConnectedStateExA(flags, name) && (flags & kRasInstalled) == 0;
}

}  // namespace

bool check_internet_connectivity(frmSwiftPatch& window, const std::string& url) {
    bool result = false;
    try {
        result = SystemIsConnected();
        const std::int32_t size = result ? GetHTTPFileSize(window, url) : 0;
        // The licence is asked for without a connection too, deliberately; its answer cannot turn
        // the result to True.
        if (size < kPlausibleBuild &&
            GetHTTPFileSize(window, Replace(url, kStagedBuild, kLicenceText)) < kPlausibleLicence) {
            result = false;
        }
    } catch (const RuntimeError& error) {
        if (error.Number() == kUnspecifiedFailure || error.Number() == kAuthenticationFailure) {
            return false;
        }
        ReportError(error, "[modDeclarations] check_internet_connectivity");
    }
    return result;
}

}  // namespace swiftpatch
