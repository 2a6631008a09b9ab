#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

namespace publish_check {

/// The program odd-server for as long as the object lives.
class PythonServer {
public:
    /// With a certificate it speaks https.
    PythonServer(const std::string& program, const std::filesystem::path& folder,
                 const std::string& certificate = {});
    ~PythonServer();
    PythonServer(const PythonServer&) = delete;
    PythonServer& operator=(const PythonServer&) = delete;

    /// "http://127.0.0.1:12345/manner/", or "https://localhost:12345/manner/"
    std::string Folder(const std::string& manner) const;

private:
    pid_t process_ = -1;
    int input_ = -1;  ///< Closing it ends the server.
    std::string server_;
};

}  // namespace publish_check
