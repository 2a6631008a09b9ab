// The data file in all its states. Where it names no server folder, the maker's own is asked; a
// proxy of the test's keeps those requests on this machine and shows them.
#include <functional>

#include "e2e/update_run.h"
#include "shared/branding.h"

namespace swiftpatch::e2e {
namespace {

constexpr char kDefaultFolder[] = "http://" SWIFTPATCH_DEFAULT_SERVER;

struct DataFile {
    const char* name;
    std::function<std::optional<std::string>()> contents;
};

void PrintTo(const DataFile& file, std::ostream* stream) { *stream << file.name; }

std::string Noise(std::size_t size) {
    std::string bytes(size, '\0');
    std::uint32_t state = 7;
    for (char& byte : bytes) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<char>(state >> 24U);
    }
    return bytes;
}

class DataFileRun : public UpdateRun {
protected:
    void ExpectNoConnection() {
        AnswerNoConnection();
        ExpectStopped();
        Close();
        ExpectFiles({});
    }
};

class WithoutAServerFolder : public DataFileRun, public ::testing::WithParamInterface<DataFile> {
protected:
    // To a proxy the platform may name the usual port or leave it out.
    std::vector<std::string> RequestsWithoutPort() const {
        std::vector<std::string> lines = server_.RequestLines();
        for (std::string& line : lines) {
            const std::size_t port = line.find(":80/");
            if (port != std::string::npos) {
                line.erase(port, 3);
            }
        }
        return lines;
    }
};

TEST_P(WithoutAServerFolder, AsksTheMakersOwnFolder) {
    const std::optional<std::string> contents = GetParam().contents();
    std::filesystem::remove(folder_->File("tolvex.dta.txt"));
    if (contents) {
        folder_->Write("tolvex.dta.txt", *contents);
    }
    Install("3.0.11.0");
    Start(server_.Host());
    ExpectNoConnection();
    EXPECT_EQ(RequestsWithoutPort(),
              (std::vector<std::string>{std::string("HEAD ") + kDefaultFolder + "tolvex30.exe",
                                        std::string("HEAD ") + kDefaultFolder + "LICENSE.TXT"}));
}

INSTANTIATE_TEST_SUITE_P(DataFile, WithoutAServerFolder,
                         ::testing::Values(DataFile{"Missing", [] { return std::nullopt; }},
                                           DataFile{"Empty", [] { return std::string(); }},
                                           DataFile{"Binary", [] { return Noise(5000); }},
                                           DataFile{"TenMegabytes",
                                                    [] {
                                                        return "[Other]\r\n" +
                                                               std::string(10 * 1024 * 1024, 'x') +
                                                               "=1\r\n";
                                                    }}),
                         [](const auto& parameter) { return parameter.param.name; });

class ServerFolderValue : public DataFileRun {};

TEST_F(ServerFolderValue, OfFiveThousandCharactersIsCutToTheBuffer) {
    constexpr std::size_t kKept = 255;
    const std::string start = server_.Host() + "/";
    const std::string value = start + std::string(5000 - start.size(), 'a');
    folder_->WriteSettings(value);
    Install("3.0.11.0");
    Start();
    ExpectNoConnection();
    const std::string path = "/" + std::string(kKept - start.size(), 'a') + "/";
    ExpectRequests({"HEAD " + path + "tolvex30.exe", "HEAD " + path + "LICENSE.TXT"});
}

TEST_F(ServerFolderValue, ThatIsEmptyIsNoAddress) {
    folder_->WriteSettings("");
    Install("3.0.11.0");
    Start();
    ExpectNoConnection();
    ExpectRequests({});
}

TEST_F(ServerFolderValue, ThatRepeatsItsKeyWithASchemeAndNoSlashIsUnderstood) {
    Publish("3.0.12.5");
    folder_->WriteSettings("serverdownloadpath=http://" + server_.Host() + "/upd");
    Install("3.0.12.5");
    Stage("3.0.12.5", kServerTime + std::chrono::hours(24));
    StartToMainWindow();
    updater_->AwaitText(kLblAnimationMsg, "You are running the latest version of q-tolvex",
                        seconds(30));
    CloseQuietly();
    ExpectRequests({"HEAD tolvex30.exe", "HEAD tolvex30.exe", "HEAD tolvex30.exe"});
    ExpectFiles({});
}

}  // namespace
}  // namespace swiftpatch::e2e
