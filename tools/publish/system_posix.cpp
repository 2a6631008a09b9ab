#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <system_error>

#include "publish/publish_error.h"
#include "publish/system.h"

namespace publish {

// The folder itself is locked, so that no file of the lock is left behind. A command that was
// started holds the lock as well: an upload can outlive the process that was killed.
FolderLock::FolderLock(const std::filesystem::path& folder)
    : handle_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY)) {
    if (handle_ >= 0 && ::flock(static_cast<int>(handle_), LOCK_EX | LOCK_NB) != 0 &&
        errno == EWOULDBLOCK) {
        ::close(static_cast<int>(handle_));
        throw PublishError("another publish is at work in this folder");
    }
}

FolderLock::~FolderLock() { ::close(static_cast<int>(handle_)); }

void FlushFile(const std::filesystem::path& file) {
    const int handle = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    const bool flushed = handle >= 0 && ::fsync(handle) == 0;
    const std::error_code error(errno, std::generic_category());
    ::close(handle);
    if (!flushed) {
        throw PublishError("cannot write " + file.string() + ": " + error.message());
    }
}

// Not every file system can.
void FlushFolder(const std::filesystem::path& folder) {
    const int handle = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ::fsync(handle);
    ::close(handle);
}

void OutliveReaders() { std::signal(SIGPIPE, SIG_IGN); }

std::string Quoted(const std::string& argument) {
    std::string word = "'";
    for (const char letter : argument) {
        word += letter == '\'' ? "'\\''" : std::string(1, letter);
    }
    return word + "'";
}

int RunInShell(const std::string& command) {
    const int status = std::system(("{ " + command + "\n} 1>&2").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace publish
