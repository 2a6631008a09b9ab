#include "publish/publish_process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace publish {

PublishProcess::PublishProcess(const std::vector<std::string>& arguments,
                               const std::function<void()>& prepare) {
    process_ = fork();
    if (process_ == 0) {
        // Opened first: somebody else may have no right to the folder that it lies in.
        const int program = open(SWIFTPATCH_PUBLISH, O_RDONLY | O_CLOEXEC);
        if (prepare) {
            prepare();
        }
        const int nowhere = open("/dev/null", O_RDWR);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            dup2(nowhere, stream);
        }
        std::string name = "publish";
        std::vector<std::string> copies = arguments;
        std::vector<char*> texts{name.data()};
        for (std::string& copy : copies) {
            texts.push_back(copy.data());
        }
        texts.push_back(nullptr);
        fexecve(program, texts.data(), environ);
        _exit(127);
    }
}

PublishProcess::~PublishProcess() {
    Kill();
    Wait();
}

int PublishProcess::Wait() {
    if (process_ > 0) {
        waitpid(process_, &status_, 0);
        process_ = -1;
    }
    return WIFEXITED(status_) ? WEXITSTATUS(status_) : 128 + WTERMSIG(status_);
}

void PublishProcess::Kill() const {
    if (process_ > 0) {
        kill(process_, SIGKILL);
    }
}

bool PublishProcess::HasEnded() {
    if (process_ > 0 && waitpid(process_, &status_, WNOHANG) == process_) {
        process_ = -1;
    }
    return process_ < 0;
}

}  // namespace publish
