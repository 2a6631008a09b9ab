#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "e2e/process.h"
#include "e2e/update_run.h"

namespace swiftpatch::e2e {

/// The exit statuses, as they are documented.
namespace unattended {
inline constexpr DWORD kNothingToDo = 0;
inline constexpr DWORD kInstalled = 10;
inline constexpr DWORD kReady = 11;
inline constexpr DWORD kNoConnection = 20;
inline constexpr DWORD kBadServer = 21;
inline constexpr DWORD kTimedOut = 22;
inline constexpr DWORD kProgramRunning = 30;
inline constexpr DWORD kProgramNotClosed = 31;
inline constexpr DWORD kNotSigned = 40;
inline constexpr DWORD kDisk = 50;
inline constexpr DWORD kOtherUpdater = 60;
inline constexpr DWORD kUsage = 64;
inline constexpr DWORD kInternal = 70;
}  // namespace unattended

/// A run of the updater without a window, whose lines are read as they come.
class UnattendedProcess {
public:
    UnattendedProcess(const std::filesystem::path& program, const std::wstring& arguments);
    ~UnattendedProcess();
    UnattendedProcess(const UnattendedProcess&) = delete;
    UnattendedProcess& operator=(const UnattendedProcess&) = delete;

    const Process& Running() const { return *process_; }
    /// Waits for the end, and for the last line. Throws DriveError when it does not come.
    DWORD AwaitEnd(milliseconds limit);
    /// Waits until a line holds this text, or the end.
    void AwaitLine(const std::string& part, milliseconds limit);
    std::string Output() const;
    std::vector<std::string> Lines() const;
    /// The longest time without a line and without a transfer.
    milliseconds LongestSilence() const;

private:
    void ReadOn();
    bool ReadWhatIsThere();
    bool IsTransferring() const;

    HANDLE read_ = nullptr;
    std::unique_ptr<Process> process_;
    mutable std::mutex mutex_;
    std::string output_;
    milliseconds quiet_{0};  ///< Since the last line.
    milliseconds silence_{0};
    std::thread reader_;
};

/// Tests of it: the folder holds it beside the other updater.
class UnattendedRun : public UpdateRun {
protected:
    UnattendedRun();

    /// Makes a run, looks that it never falls silent, and returns how it ended.
    DWORD Run(const std::wstring& arguments = L"--json");
    /// Some line of the last run holds this text.
    bool Said(const std::string& part) const;

    std::filesystem::path Program() const { return folder_->File("swiftpatch-unattended.exe"); }

    std::vector<std::string> lines_;
};

/// Every run has its end and its lines, whatever the server does.
inline constexpr milliseconds kLongestUnattendedRun{150000};
inline constexpr milliseconds kLongestSilence{5000};

/// Makes a run of `program` and expects that it was never silent for long; its lines go to `lines`.
DWORD RunUnattended(const std::filesystem::path& program, const std::wstring& arguments,
                    std::vector<std::string>& lines);

}  // namespace swiftpatch::e2e
