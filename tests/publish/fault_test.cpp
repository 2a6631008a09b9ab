// What the disk and its owner can refuse.
#include <gmock/gmock.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

#include "publish/publish_process.h"
#include "publish/published_folder.h"

namespace publish {
namespace {

namespace fs = std::filesystem;

class PublishFault : public PublishedFolder {
protected:
    /// With a signature beside the build, since not everybody may read the secret key.
    int RunApart(const std::function<void()>& prepare) {
        const std::string build = MakeBuild(kNew).string();
        WriteBytes(build + ".minisig", minisign.Sign("work", "tolvex30.exe", BuildOf(kNew), ""));
        PublishProcess process({folder.string(), build, "--keys", publicKeys["work"]}, prepare);
        return process.Wait();
    }

    std::string key = MakeKey("work");
};

/// Writing fails at each place of the way once: in the build, in the signature, in what is kept.
TEST_F(PublishFault, WhatCannotBeWrittenWholeChangesNothing) {
    ASSERT_EQ(Publish(kOld, {"--key", key}), 0) << output;
    const auto before = Snapshot();
    for (const rlim_t bytes : {0U, 100U, 400U, 4096U, 200000U, 209999U}) {
        EXPECT_EQ(RunApart([bytes] {
                      signal(SIGXFSZ, SIG_IGN);
                      const rlimit limit{bytes, bytes};
                      setrlimit(RLIMIT_FSIZE, &limit);
                  }),
                  1);
        EXPECT_EQ(Snapshot(), before) << bytes;
    }
}

/// A file system of its own, a few megabytes in memory.
class SmallDisk {
public:
    SmallDisk(const fs::path& folder, const std::string& options)
        : folder_(folder),
          mounted_(mount("none", folder.c_str(), "tmpfs", 0, options.c_str()) == 0) {}
    ~SmallDisk() {
        if (mounted_) {
            umount(folder_.c_str());
        }
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool Mounted() const { return mounted_; }

private:
    fs::path folder_;
    bool mounted_;
};

TEST_F(PublishFault, FullDiskChangesNothing) {
    const SmallDisk disk(folder, "size=1200k");
    if (!disk.Mounted()) {
        GTEST_SKIP() << "nothing can be mounted here";
    }
    ASSERT_EQ(Publish(kOld, {"--key", key}), 0) << output;
    const auto before = Snapshot();
    int refused = 0;
    for (const std::size_t filler : {980000U, 850000U, 700000U, 560000U}) {
        Write("filler", std::string(filler, 'x'));
        const int status = Publish(kNew, {"--key", key});
        fs::remove(folder / "filler");
        if (status == 0) {
            EXPECT_EQ(Published(), BuildOf(kNew));
            break;
        }
        ++refused;
        EXPECT_EQ(Snapshot(), before) << output;
    }
    EXPECT_GE(refused, 2);
}

/// The release comes about with one more file each time.
TEST_F(PublishFault, DiskThatTakesNoMoreFilesChangesNothing) {
    int refused = 0;
    for (int names = 10; names < 20; ++names) {
        const SmallDisk disk(folder, "size=4m,nr_inodes=" + std::to_string(names));
        if (!disk.Mounted()) {
            GTEST_SKIP() << "nothing can be mounted here";
        }
        ASSERT_EQ(Publish(kOld, {"--key", key}), 0) << names << output;
        const auto before = Snapshot();
        if (Publish(kNew, {"--key", key}) == 0) {
            break;
        }
        ++refused;
        EXPECT_EQ(Snapshot(), before) << output;
    }
    EXPECT_GE(refused, 3);
}

TEST_F(PublishFault, FolderThatTakesNoFilesChangesNothing) {
    if (getuid() != 0) {
        GTEST_SKIP() << "needs root, who can become somebody without rights";
    }
    ASSERT_EQ(Publish(kOld, {"--key", key}), 0) << output;
    const auto before = Snapshot();
    fs::permissions(work, fs::perms::others_exec | fs::perms::others_read, fs::perm_options::add);
    EXPECT_EQ(RunApart([] {
                  constexpr uid_t kNobody = 65534;
                  if (setgid(kNobody) != 0 || setuid(kNobody) != 0) {
                      _exit(126);
                  }
              }),
              1);
    EXPECT_EQ(Snapshot(), before);
}

}  // namespace
}  // namespace publish
