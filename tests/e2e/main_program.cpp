#include "e2e/main_program.h"

#include <sstream>

#include "e2e/text.h"
#include "e2e/window_view.h"

namespace swiftpatch::e2e {
namespace {

constexpr milliseconds kLongestStart{10000};
constexpr milliseconds kLongestEnd{5000};

std::string RawRecordIn(const std::filesystem::path& folder) {
    const std::filesystem::path file = folder / kRecordName;
    return std::filesystem::exists(file) ? ReadWholeFile(file) : std::string();
}

// The first line reads "started VERSION PROCESS PATH"; 0 while it is not there completely.
DWORD RecordedProcess(const std::filesystem::path& folder) {
    const std::string record = RawRecordIn(folder);
    if (record.find('\n') == std::string::npos) {
        return 0;
    }
    std::istringstream words(record);
    std::string started;
    std::string version;
    DWORD process = 0;
    words >> started >> version >> process;
    return process;
}

DWORD AwaitRecordedProcess(const std::filesystem::path& folder, milliseconds limit) {
    DWORD process = 0;
    Await(
        "the start of the main program", [&] { return (process = RecordedProcess(folder)) != 0; },
        limit);
    return process;
}

std::string WithoutProcess(const std::string& line) {
    if (!BeginsWith(line, "started ")) {
        return line;
    }
    std::istringstream words(line);
    std::string started;
    std::string version;
    std::string process;
    std::string path;
    words >> started >> version >> process >> std::ws;
    std::getline(words, path);
    return "started " + version + " " + path;
}

}  // namespace

MainProgram::MainProgram(const std::filesystem::path& program, const std::wstring& arguments)
    : process_(program, arguments) {
    Await(
        "the main program's window", [this] { return Window() != nullptr; }, kLongestStart);
}

MainProgram::MainProgram(const std::filesystem::path& folder, milliseconds limit)
    : process_(AwaitRecordedProcess(folder, limit)) {}

HWND MainProgram::Window() const {
    const std::vector<HWND> windows = VisibleWindowsOf(process_.Id());
    return windows.empty() ? nullptr : windows.front();
}

void MainProgram::Close() const {
    Await(
        "the main program's window", [this] { return Window() != nullptr || !process_.Running(); },
        kLongestStart);
    PostMessageW(Window(), WM_CLOSE, 0, 0);
    if (!process_.WaitForEnd(kLongestEnd)) {
        throw DriveError("the main program does not close");
    }
}

std::vector<std::string> RecordIn(const std::filesystem::path& folder) {
    std::vector<std::string> lines;
    std::istringstream record(RawRecordIn(folder));
    std::string line;
    while (std::getline(record, line)) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        lines.push_back(WithoutProcess(line));
    }
    return lines;
}

}  // namespace swiftpatch::e2e
