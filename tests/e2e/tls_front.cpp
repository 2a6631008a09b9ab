#include "e2e/tls_front.h"

#include <wincrypt.h>

#include "e2e/options.h"
#include "e2e/shell_below.h"
#include "e2e/text.h"
#include "e2e/wait.h"
#include "e2e/win32.h"

namespace swiftpatch::e2e {
namespace {

namespace fs = std::filesystem;

constexpr milliseconds kLongestStart{20000};

fs::path Certificate(const std::string& name) {
    return TestOptions().fixtures / "certificates" / name;
}

}  // namespace

TlsFront::TlsFront(std::uint16_t port, const std::string& certificate)
    : file_(TestOptions().scratch / ("tls-" + std::to_string(port))) {
    fs::remove(file_);
    RunBelow("exec \\\"$@\\\" >/dev/null 2>&1 </dev/null",
             {"sh", PathBelow(TestOptions().fixtures / "front"), std::to_string(port),
              PathBelow(Certificate(certificate + ".pem")), PathBelow(file_)});
    Await(
        "the server that speaks TLS", [this] { return fs::exists(file_); }, kLongestStart);
    port_ = ReadWholeFile(file_);
}

TlsFront::~TlsFront() {
    std::error_code ignored;
    fs::remove(file_, ignored);
}

void TrustOwnAuthority() {
    const std::string bytes = ReadWholeFile(Certificate("authority.der"));
    const HCERTSTORE store = CertOpenSystemStoreA(0, "ROOT");
    const BOOL added = CertAddEncodedCertificateToStore(
        store, X509_ASN_ENCODING, reinterpret_cast<const BYTE*>(bytes.data()),
        static_cast<DWORD>(bytes.size()), CERT_STORE_ADD_REPLACE_EXISTING, nullptr);
    CertCloseStore(store, 0);
    if (!added) {
        throw DriveError("the system trusts no authority of ours: system error " +
                         std::to_string(GetLastError()));
    }
}

}  // namespace swiftpatch::e2e
