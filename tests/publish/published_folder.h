#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "publish_check/version.h"
#include "signing/minisign_program.h"

namespace publish {

// Three builds, one after the other.
inline constexpr publish_check::Version kOld{3, 0, 11, 0};
inline constexpr publish_check::Version kNew{3, 0, 12, 5};
inline constexpr publish_check::Version kNext{3, 0, 13, 0};

/// A server folder and a place for the maker's builds, which go with the test.
class PublishedFolder : public testing::Test {
protected:
    PublishedFolder();
    ~PublishedFolder() override;

    /// Writes a build of the maker's, which was compiled years ago. The same version and size give
    /// the same bytes.
    std::filesystem::path MakeBuild(const publish_check::Version& version,
                                    std::size_t size = 210000);
    /// Runs publish in this process; what it writes is in `output`.
    int Run(std::vector<std::string> arguments);
    /// The usual call.
    int Publish(const publish_check::Version& version, std::vector<std::string> more = {});
    /// Has minisign make a key pair; returns the file of the secret key.
    std::string MakeKey(const std::string& name);

    std::string Read(const std::string& name) const;
    void Write(const std::string& name, const std::string& bytes) const;
    std::string Published() const { return Read("tolvex30.exe"); }
    /// Every file and folder below the server folder, with its time and bytes.
    std::map<std::string, std::string> Snapshot() const;
    std::vector<std::string> Names() const;

    std::filesystem::path work;
    std::filesystem::path folder;
    std::string output;
    swiftpatch::MinisignProgram minisign;
    std::map<std::string, std::string> publicKeys;
};

/// The bytes that MakeBuild writes.
std::string BuildOf(const publish_check::Version& version, std::size_t size = 210000);

std::string ReadBytes(const std::filesystem::path& file);
void WriteBytes(const std::filesystem::path& file, const std::string& bytes);

/// Whether a signature file is one of that build, by that key.
bool Fits(const std::string& signatureFile, const std::string& build, const std::string& publicKey);

}  // namespace publish
