#pragma once

#include <string>

#include "support/minisign_signer.h"
#include "unit/check_support.h"

namespace swiftpatch {

/// The signature file of a build.
std::string SignatureBy(const MinisignSigner& signer, const std::string& build,
                        const std::string& fileName = "tolvex30.exe");

/// The build that is on offer in these tests.
std::string NewBuild();

/// A test of a machine on which builds have to be signed, beside a program of version 3.0.11.0.
class SignedTest : public CheckTest {
protected:
    SignedTest();

    static constexpr const char* kSignature = "http://tolvex.example/files/tolvex30.exe.minisig";
    static constexpr const char* kMissing =
        "The update on the server is not signed by the maker of q-tolvex.\r\n"
        "It was not downloaded. Your program has not been changed.";
    static constexpr const char* kInvalid =
        "The downloaded update was not signed by the maker of q-tolvex.\r\n"
        "The file could have been tampered with.\r\n"
        "Your program has not been changed.";

    /// The maker's signature of `build`, or that of another key.
    std::string Signature(const std::string& build) const { return SignatureBy(maker, build); }

    /// The answer to GET of the signature, always or the next time.
    void PublishSignature(const std::string& file);
    void PublishSignatureOnce(const std::string& file);
    /// Both, as they fit.
    void PublishSigned(const std::string& build);

    /// Runs the check; a failure of that title and text must be reported, and what every refused
    /// update leaves be there.
    void ExpectRefused(const std::string& title, const std::string& text);
    void ExpectNothingChanged();
    /// The requests after the three looks at the build, without the server's name.
    std::string RequestsAfterProbes() const;
    /// The build is offered, and what was staged is `build`.
    void ExpectOffered(const std::string& build);

    const MinisignSigner maker{"maker"};
    const MinisignSigner stranger{"stranger"};
    const std::string oldBuild = headless::Build("3.0.11.0", 210000);
    const std::string newBuild = NewBuild();
};

}  // namespace swiftpatch
