#include "publish/published_folder.h"

#include <fstream>
#include <iterator>
#include <sstream>

#include "publish/run.h"
#include "publish_check/sample_server.h"
#include "shared/paths.h"
#include "signing/signature_file.h"
#include "support/minisign_signer.h"

namespace publish {

namespace fs = std::filesystem;
using publish_check::Version;

std::string ReadBytes(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void WriteBytes(const fs::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

std::string BuildOf(const Version& version, std::size_t size) {
    return publish_check::SampleBuild(version, size);
}

bool Fits(const std::string& signatureFile, const std::string& build,
          const std::string& publicKey) {
    const auto keys = swiftpatch::ParseSigningKeys(publicKey);
    return keys &&
           swiftpatch::JudgeSignature(swiftpatch::ParseSignatureFile(signatureFile), *keys,
                                      swiftpatch::HashOfBuild(build), swiftpatch::kStagedBuild) ==
               swiftpatch::SignatureVerdict::kSigned;
}

PublishedFolder::PublishedFolder() {
    std::string pattern = (fs::temp_directory_path() / "publish-test-XXXXXX").string();
    work = mkdtemp(pattern.data());
    folder = work / "srv";
    fs::create_directory(folder);
}

PublishedFolder::~PublishedFolder() {
    std::error_code error;
    fs::remove_all(work, error);
}

fs::path PublishedFolder::MakeBuild(const Version& version, std::size_t size) {
    const fs::path file = work / (publish_check::PlainText(version) + ".exe");
    WriteBytes(file, BuildOf(version, size));
    constexpr auto kYears = std::chrono::hours(24 * 365 * 3);
    fs::last_write_time(file, fs::file_time_type::clock::now() - kYears);
    return file;
}

int PublishedFolder::Run(std::vector<std::string> arguments) {
    std::ostringstream text;
    const int status = RunPublish(arguments, text, text);
    output = text.str();
    return status;
}

int PublishedFolder::Publish(const Version& version, std::vector<std::string> more) {
    more.insert(more.begin(), {folder.string(), MakeBuild(version).string()});
    return Run(more);
}

std::string PublishedFolder::MakeKey(const std::string& name) {
    publicKeys[name] = minisign.MakeKey(name);
    return minisign.SecretKeyFile(name);
}

std::string PublishedFolder::Read(const std::string& name) const {
    return ReadBytes(folder / name);
}

void PublishedFolder::Write(const std::string& name, const std::string& bytes) const {
    WriteBytes(folder / name, bytes);
}

std::map<std::string, std::string> PublishedFolder::Snapshot() const {
    std::map<std::string, std::string> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        std::string& state = files[entry.path().lexically_relative(folder).string()];
        if (entry.is_regular_file()) {
            state = std::to_string(entry.last_write_time().time_since_epoch().count()) +
                    ReadBytes(entry.path());
        }
    }
    return files;
}

std::vector<std::string> PublishedFolder::Names() const {
    std::vector<std::string> names;
    for (const auto& [name, state] : Snapshot()) {
        names.push_back(name);
    }
    return names;
}

}  // namespace publish
