#include "publish_check/python_server.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace publish_check {
namespace {

struct Pipe {
    Pipe() {
        if (pipe2(ends.data(), O_CLOEXEC) != 0) {
            throw std::runtime_error("no pipe");
        }
    }
    std::array<int, 2> ends{};
};

std::string ReadLine(int file) {
    std::string line;
    for (char character = 0; read(file, &character, 1) == 1 && character != '\n';) {
        line += character;
    }
    return line;
}

}  // namespace

PythonServer::PythonServer(const std::string& program, const std::filesystem::path& folder,
                           const std::string& certificate) {
    const Pipe input;
    const Pipe output;
    process_ = fork();
    if (process_ == 0) {
        dup2(input.ends[0], STDIN_FILENO);
        dup2(output.ends[1], STDOUT_FILENO);
        const char* const more = certificate.empty() ? nullptr : certificate.c_str();
        execlp("python3", "python3", program.c_str(), folder.c_str(), more, nullptr);
        _exit(127);
    }
    input_ = input.ends[1];
    close(input.ends[0]);
    close(output.ends[1]);
    const std::string port = ReadLine(output.ends[0]);
    close(output.ends[0]);
    if (port.empty()) {
        throw std::runtime_error("the server did not start");
    }
    server_ = (certificate.empty() ? "http://127.0.0.1:" : "https://localhost:") + port;
}

PythonServer::~PythonServer() {
    close(input_);
    int status = 0;
    waitpid(process_, &status, 0);
}

std::string PythonServer::Folder(const std::string& manner) const {
    return server_ + "/" + manner + "/";
}

}  // namespace publish_check
