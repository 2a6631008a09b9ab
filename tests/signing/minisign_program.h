#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace swiftpatch {

/// The program minisign, at work in a folder of its own that is removed at the end. What it cannot
/// do is thrown, but for a signature that it refuses.
class MinisignProgram {
public:
    MinisignProgram();
    ~MinisignProgram();
    MinisignProgram(const MinisignProgram&) = delete;
    MinisignProgram& operator=(const MinisignProgram&) = delete;

    /// Makes a key pair without a password; the public key as 56 letters.
    std::string MakeKey(const std::string& name) const;
    /// The file of the secret one, beside which the public one lies.
    std::string SecretKeyFile(const std::string& name) const {
        return (folder_ / (name + ".key")).string();
    }

    /// Signs a file with this content; the signature file. An empty comment is minisign's own.
    std::string Sign(const std::string& keyName, const std::string& fileName,
                     std::string_view content, const std::string& trustedComment) const;

    bool Verify(const std::string& publicKey, const std::string& fileName, std::string_view content,
                std::string_view signatureFile) const;

private:
    /// False when the program ends with an error.
    bool Run(const std::string& arguments) const;

    std::filesystem::path folder_;
};

}  // namespace swiftpatch
