#include "e2e/unattended_run.h"

#include <algorithm>
#include <array>
#include <iostream>

#include "e2e/options.h"
#include "e2e/text.h"

namespace swiftpatch::e2e {

using std::chrono::duration_cast;
using std::chrono::steady_clock;

UnattendedProcess::UnattendedProcess(const std::filesystem::path& program,
                                     const std::wstring& arguments) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    HANDLE write = nullptr;
    if (CreatePipe(&read_, &write, &inherited, 0) == 0) {
        throw DriveError("no pipe");
    }
    SetHandleInformation(read_, HANDLE_FLAG_INHERIT, 0);
    process_ = std::make_unique<Process>(program, arguments, std::string(), write);
    CloseHandle(write);  // So that the program's end is the end of what can be read.
    reader_ = std::thread([this] { ReadOn(); });
}

UnattendedProcess::~UnattendedProcess() {
    process_->Kill();
    if (reader_.joinable()) {
        reader_.join();
    }
    CloseHandle(read_);
}

// What the system starts beside a console program can keep the other end of the pipe open: so the
// end of what comes is that of the process. A machine with much else to do lets this thread wait,
// too: only the looks of this thread make the silence longer, each by a little.
void UnattendedProcess::ReadOn() {
    constexpr milliseconds kBetweenLooks{5};
    constexpr milliseconds kLook{20};
    SteadyTime last = steady_clock::now();
    for (bool running = true; running;) {
        running = process_->Running();
        if (ReadWhatIsThere()) {
            quiet_ = milliseconds(0);
        } else if (running) {
            std::this_thread::sleep_for(kBetweenLooks);
        }
        const SteadyTime now = steady_clock::now();
        if (!IsTransferring()) {
            quiet_ += std::min(duration_cast<milliseconds>(now - last), kLook);
        }
        last = now;
        const std::lock_guard lock(mutex_);
        silence_ = std::max(silence_, quiet_);
    }
}

bool UnattendedProcess::ReadWhatIsThere() {
    std::array<char, 4096> bytes{};
    bool any = false;
    DWORD count = 0;
    while (PeekNamedPipe(read_, nullptr, 0, nullptr, &count, nullptr) != 0 && count != 0 &&
           ReadFile(read_, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) != 0) {
        const std::lock_guard lock(mutex_);
        output_.append(bytes.data(), count);
        any = true;
    }
    return any;
}

// What was said last is that something was asked for, or that it comes.
bool UnattendedProcess::IsTransferring() const {
    constexpr std::array kEvents{"\"request\"", "\"progress\"", "\"waiting\""};
    const std::string start = "{\"event\":";
    const std::size_t line = output_.rfind(start);
    return output_.empty() ||
           (line != std::string::npos &&
            std::any_of(kEvents.begin(), kEvents.end(), [&](const char* event) {
                return BeginsWith(std::string_view(output_).substr(line + start.size()), event);
            }));
}

DWORD UnattendedProcess::AwaitEnd(milliseconds limit) {
    if (!process_->WaitForEnd(limit)) {
        throw DriveError("the run does not end; it has said:\n" + Output());
    }
    if (reader_.joinable()) {
        reader_.join();  // With the last line.
    }
    return process_->ExitCode();
}

void UnattendedProcess::AwaitLine(const std::string& part, milliseconds limit) {
    Await(
        "a line with " + part,
        [&] { return Output().find(part) != std::string::npos || !process_->Running(); }, limit);
}

std::string UnattendedProcess::Output() const {
    const std::lock_guard lock(mutex_);
    return output_;
}

std::vector<std::string> UnattendedProcess::Lines() const {
    const std::string output = Output();
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end; (end = output.find("\r\n", start)) != std::string::npos;
         start = end + 2) {
        lines.push_back(output.substr(start, end - start));
    }
    return lines;
}

milliseconds UnattendedProcess::LongestSilence() const {
    const std::lock_guard lock(mutex_);
    return silence_;
}

DWORD RunUnattended(const std::filesystem::path& program, const std::wstring& arguments,
                    std::vector<std::string>& lines) {
    UnattendedProcess run(program, arguments);
    const DWORD status = run.AwaitEnd(kLongestUnattendedRun);
    lines = run.Lines();
    EXPECT_LT(run.LongestSilence(), kLongestSilence);
    return status;
}

UnattendedRun::UnattendedRun() {
    folder_->CopyIn(TestOptions().unattended, "swiftpatch-unattended.exe");
}

DWORD UnattendedRun::Run(const std::wstring& arguments) {
    before_ = folder_->Take();
    const DWORD status = RunUnattended(Program(), arguments, lines_);
    std::string all;
    for (const std::string& line : lines_) {
        all += line + "\n";
    }
    if (HasFailure()) {
        std::cout << all;
    }
    return status;
}

bool UnattendedRun::Said(const std::string& part) const {
    return std::any_of(lines_.begin(), lines_.end(), [&part](const std::string& line) {
        return line.find(part) != std::string::npos;
    });
}

}  // namespace swiftpatch::e2e
