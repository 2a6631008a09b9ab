#include "e2e/resources.h"

// Needs the platform's own header before it.
#include <tlhelp32.h>

#include <algorithm>
#include <filesystem>

#include "e2e/text.h"
#include "e2e/window_view.h"

namespace swiftpatch::e2e {
namespace fs = std::filesystem;
namespace {

struct WindowCount {
    DWORD process;
    std::size_t count;
};

BOOL CALLBACK CountWindow(HWND window, LPARAM parameter) {
    WindowCount& count = *reinterpret_cast<WindowCount*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == count.process) {
        count.count += 1 + WindowsInside(window).size();
    }
    return TRUE;
}

std::size_t WindowsOf(DWORD process) {
    WindowCount count{process, 0};
    EnumWindows(CountWindow, reinterpret_cast<LPARAM>(&count));
    return count.count;
}

// The process below Wine whose command line names the updater; there is one at a time in a prefix,
// and each part of the tests has a folder of its own.
fs::path FolderBelow(const std::string& program) {
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(L"Z:\\proc", ignored)) {
        const std::string name = PathText(entry.path().filename());
        if (name.find_first_not_of("0123456789") != std::string::npos) {
            continue;
        }
        try {
            const std::string line = ReadWholeFile(entry.path() / "cmdline");
            if (line.find(program) != std::string::npos &&
                line.find("e2e_tests") == std::string::npos) {
                return entry.path();
            }
        } catch (const DriveError&) {
            continue;  // It has just gone.
        }
    }
    throw DriveError("no process below Wine runs " + program);
}

std::size_t EntriesIn(const fs::path& folder) {
    std::size_t count = 0;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        ++count;
    }
    return count;
}

// Wine's ends of the pipes between a thread and its server: requests, answers, and both of waits.
constexpr std::size_t kPipesOfThread = 4;

}  // namespace

std::string Resources::Text() const {
    return std::to_string(gdi) + " GDI, " + std::to_string(user) + " USER, " +
           std::to_string(handles) + " handles, " + std::to_string(windows) + " windows, " +
           std::to_string(threads) + " threads, " + std::to_string(files) + " files";
}

Resources ResourcesOf(const Process& process) {
    Resources resources;
    resources.gdi = GetGuiResources(process.Handle(), GR_GDIOBJECTS);
    resources.user = GetGuiResources(process.Handle(), GR_USEROBJECTS);
    GetProcessHandleCount(process.Handle(), &resources.handles);
    resources.windows = WindowsOf(process.Id());
    const fs::path below = FolderBelow(PathText(process.Program()));
    resources.threads = EntriesIn(below / "task");
    const std::size_t open = EntriesIn(below / "fd");
    resources.files = open - std::min(open, kPipesOfThread * resources.threads);
    return resources;
}

int RunningPrograms(const wchar_t* fileName) {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    int count = 0;
    for (BOOL more = Process32FirstW(snapshot, &entry); more != FALSE;
         more = Process32NextW(snapshot, &entry)) {
        count += _wcsicmp(entry.szExeFile, fileName) == 0 ? 1 : 0;
    }
    CloseHandle(snapshot);
    return count;
}

}  // namespace swiftpatch::e2e
