#include "shared/transfer_fault.h"

namespace swiftpatch {

std::string TransferFaultText(TransferFault fault) {
    switch (fault) {
        case TransferFault::kCertificateExpired:
            return "The certificate of the update server has expired or is not valid yet. Please "
                   "check the date of this computer, too.";
        case TransferFault::kCertificateName:
            return "The certificate of the update server was issued to a server of another name.";
        case TransferFault::kCertificateAuthority:
            return "The certificate of the update server was issued by an authority that this "
                   "system does not trust.";
        case TransferFault::kCertificateRevoked:
            return "The certificate of the update server has been revoked.";
        case TransferFault::kCertificateUnchecked:
            return "This system could not check the certificate of the update server, or whether "
                   "it has been revoked.";
        case TransferFault::kCertificateInvalid:
            return "The certificate of the update server is not valid.";
        case TransferFault::kSecureChannel:
            return "This system and the update server could not agree on a secure connection.";
        case TransferFault::kUnprotectedRedirect:
            return "The update server redirects from a secure address to one that is not.";
        case TransferFault::kProxyLogon:
            return "The proxy server wants a logon that this system does not have.";
        default:
            return "";
    }
}

}  // namespace swiftpatch
