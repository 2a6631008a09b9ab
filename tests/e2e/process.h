#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "e2e/wait.h"
#include "e2e/win32.h"

namespace swiftpatch::e2e {

/// A program that was started here, or one that was found: it does not outlive this object.
class Process {
public:
    /// Starts `program` in its own folder. The settings of the surroundings that could send its
    /// requests elsewhere are kept from it; `httpProxy` ("127.0.0.1:port") gives it one of ours.
    /// What it writes goes to `output`, which it inherits, unless that is null.
    explicit Process(const std::filesystem::path& program, const std::wstring& arguments = {},
                     const std::string& httpProxy = {}, HANDLE output = nullptr);
    /// Takes over a running program by the number of its process.
    explicit Process(DWORD id);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    DWORD Id() const { return id_; }
    HANDLE Handle() const { return handle_; }
    /// The file that was started; empty for a program that was found.
    const std::filesystem::path& Program() const { return program_; }
    bool Running() const;
    /// False when it still runs after `limit`.
    bool WaitForEnd(milliseconds limit) const;
    /// Valid once it has ended.
    DWORD ExitCode() const;
    void Kill() const;
    /// The largest amount of memory that it has occupied, in bytes.
    std::size_t PeakWorkingSet() const;

private:
    std::filesystem::path program_;
    HANDLE handle_ = nullptr;
    DWORD id_ = 0;
};

/// The numbers of the processes that run the file `program`, whoever started them.
std::vector<DWORD> ProcessesOf(const std::filesystem::path& program);

}  // namespace swiftpatch::e2e
