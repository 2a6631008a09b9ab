// publish is ended by force at random moments while clients ask for the signature and the build
// without a pause, in the order in which updaters do.
#include <gmock/gmock.h>

#include <atomic>
#include <iostream>
#include <random>
#include <set>
#include <thread>

#include "publish/publish_main.h"
#include "publish/publish_process.h"
#include "publish/published_folder.h"
#include "publish_check/http_client.h"
#include "publish_check/python_server.h"

namespace publish {
namespace {

namespace fs = std::filesystem;
using publish_check::Version;
using Clock = std::chrono::steady_clock;

/// A client that asks as an updater does: for the signature, for the build, and once more for the
/// signature where they do not fit.
class Client {
public:
    Client(std::string address, std::string key, const std::atomic<int>& changes)
        : address_(std::move(address)), key_(std::move(key)), changes_(changes) {}

    void Run(const std::atomic<bool>& end) {
        while (!end) {
            const int before = changes_;
            const bool fits = Fetch();
            // Only one change at a time is what an updater can bear: two signatures are not asked
            // for.
            if (changes_ - before <= 1) {
                ++fetched;
                misfits += fits ? 0 : 1;
            }
        }
    }

    int fetched = 0;
    int misfits = 0;

private:
    bool Fetch() {
        const std::string signature = Get("tolvex30.exe.minisig");
        const std::string build = Get("tolvex30.exe");
        return Fits(signature, build, key_) || Fits(Get("tolvex30.exe.minisig"), build, key_);
    }
    std::string Get(const std::string& name) { return http_.Ask("GET", address_ + name).body; }

    publish_check::HttpClient http_;
    std::string address_;
    std::string key_;
    const std::atomic<int>& changes_;
};

class KilledPublish : public PublishedFolder {
protected:
    static constexpr std::size_t kSize = 210000;

    Version Numbered(int number) const { return {3, 0, static_cast<std::uint16_t>(number), 0}; }
    std::vector<std::string> Arguments(int number) {
        return {folder.string(), MakeBuild(Numbered(number)).string(),
                "--key",         key,
                "--installed",   "1.0"};
    }
    /// Until the release is about to be put in place; false when it has ended before.
    bool WaitForPlacement(PublishProcess& process) const {
        while (!process.HasEnded()) {
            const fs::path workshop = folder / ".publish";
            std::error_code error;
            for (const auto& entry : fs::directory_iterator(workshop, error)) {
                if (fs::exists(entry.path() / "before", error)) {
                    return true;
                }
            }
        }
        return false;
    }
    void KillOnce(int number, bool amidPlacement);
    void CheckKilled(int number);

    std::string key = MakeKey("work");
    std::mt19937 random{20260101};
    Clock::duration whole{};
    int present = 0;       ///< The number of the build in service.
    std::set<int> served;  ///< All that were.
    int before = 0, between = 0, after = 0;
    std::atomic<int> changes{0};
};

void KilledPublish::KillOnce(int number, bool amidPlacement) {
    PublishProcess process(Arguments(number));
    const auto longest = amidPlacement ? std::chrono::milliseconds(30) : whole;
    if (!amidPlacement || WaitForPlacement(process)) {
        std::uniform_int_distribution<Clock::rep> moment(0, Clock::duration(longest).count());
        std::this_thread::sleep_for(Clock::duration(moment(random)));
    }
    process.Kill();
    process.Wait();
    ++changes;
}

/// The old build or the new one is in service, with its signature.
void KilledPublish::CheckKilled(int number) {
    const std::string build = Published();
    const bool isNew = build == BuildOf(Numbered(number));
    ASSERT_TRUE(isNew || build == BuildOf(Numbered(present))) << "after the kill of " << number;
    const std::string signatures = Read("tolvex30.exe.minisig");
    ASSERT_TRUE(Fits(signatures, build, publicKeys["work"])) << "after the kill of " << number;
    const bool newSignature = Fits(signatures, BuildOf(Numbered(number)), publicKeys["work"]);
    ++(isNew ? after : newSignature ? between : before);
    if (isNew) {
        present = number;
        served.insert(number);
    }
}

TEST_F(KilledPublish, LeavesAPairThatFitsAndLosesNoBuild) {
    const auto start = Clock::now();
    ASSERT_EQ(PublishProcess(Arguments(0)).Wait(), 0);
    whole = Clock::now() - start;
    served.insert(0);
    publish_check::PythonServer server(SWIFTPATCH_ODD_SERVER, folder);
    std::atomic<bool> end{false};
    std::vector<std::unique_ptr<Client>> clients;
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i) {
        clients.push_back(
            std::make_unique<Client>(server.Folder("good"), publicKeys["work"], changes));
        threads.emplace_back([&client = *clients.back(), &end] { client.Run(end); });
    }
    int number = 0;
    for (int kill = 0; kill < Kills() && !HasFatalFailure(); ++kill) {
        KillOnce(++number, kill % 2 == 1);
        CheckKilled(number);
    }
    EXPECT_EQ(PublishProcess(Arguments(++number)).Wait(), 0);
    end = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(Published(), BuildOf(Numbered(number)));
    EXPECT_FALSE(fs::exists(folder / ".publish"));
    for (const int each : served) {
        EXPECT_EQ(Read("previous/" + publish_check::PlainText(Numbered(each)) + "/tolvex30.exe"),
                  BuildOf(Numbered(each)));
    }
    std::cout << Kills() << " kills: " << before << " before a change, " << between
              << " between signature and build, " << after << " after the build\n";
    for (const auto& client : clients) {
        std::cout << client->fetched << " pairs fetched, " << client->misfits << " do not fit\n";
        EXPECT_GT(client->fetched, 0);
        EXPECT_EQ(client->misfits, 0);
    }
}

}  // namespace
}  // namespace publish
