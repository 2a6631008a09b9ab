#include "e2e/process.h"

#include <psapi.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "e2e/text.h"

namespace swiftpatch::e2e {
namespace {

// The surroundings of a child: those of this process, but with a proxy of our choice or none. A
// block of texts, each ended by a NUL, and one more at the end.
std::wstring Surroundings(const std::string& httpProxy) {
    std::wstring block;
    wchar_t* own = GetEnvironmentStringsW();
    for (const wchar_t* entry = own; *entry != L'\0'; entry += std::wcslen(entry) + 1) {
        const std::wstring text = entry;
        const std::wstring name = text.substr(0, text.find(L'='));
        if (_wcsicmp(name.c_str(), L"http_proxy") != 0 &&
            _wcsicmp(name.c_str(), L"no_proxy") != 0) {
            block += text + L'\0';
        }
    }
    FreeEnvironmentStringsW(own);
    if (!httpProxy.empty()) {
        block += L"http_proxy=" + Wide(httpProxy) + L'\0';
    }
    return block + L'\0';
}

// Also when the path is spelled in another way.
bool Runs(DWORD id, const std::filesystem::path& program) {
    const HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id);
    std::array<wchar_t, MAX_PATH> path{};
    auto length = static_cast<DWORD>(path.size());
    const bool known = QueryFullProcessImageNameW(process, 0, path.data(), &length) != 0;
    CloseHandle(process);
    std::error_code unequal;
    return known && std::filesystem::equivalent(path.data(), program, unequal);
}

}  // namespace

Process::Process(const std::filesystem::path& program, const std::wstring& arguments,
                 const std::string& httpProxy, HANDLE output)
    : program_(program) {
    std::wstring commandLine = L"\"" + program.native() + L"\"";
    if (!arguments.empty()) {
        commandLine += L" " + arguments;
    }
    std::wstring surroundings = Surroundings(httpProxy);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    if (output != nullptr) {
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = output;
        startup.hStdError = output;
    }
    PROCESS_INFORMATION made = {};
    if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr,
                       output == nullptr ? FALSE : TRUE, CREATE_UNICODE_ENVIRONMENT,
                       surroundings.data(), program.parent_path().c_str(), &startup, &made) == 0) {
        throw DriveError("cannot start " + PathText(program) + ": system error " +
                         std::to_string(GetLastError()));
    }
    CloseHandle(made.hThread);
    handle_ = made.hProcess;
    id_ = made.dwProcessId;
}

Process::Process(DWORD id) : id_(id) {
    handle_ = OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE | PROCESS_QUERY_INFORMATION, FALSE, id);
    if (handle_ == nullptr) {
        throw DriveError("there is no process " + std::to_string(id));
    }
}

Process::~Process() {
    Kill();
    CloseHandle(handle_);
}

bool Process::Running() const { return WaitForSingleObject(handle_, 0) == WAIT_TIMEOUT; }

bool Process::WaitForEnd(milliseconds limit) const {
    return WaitForSingleObject(handle_, static_cast<DWORD>(limit.count())) == WAIT_OBJECT_0;
}

DWORD Process::ExitCode() const {
    DWORD code = 0;
    GetExitCodeProcess(handle_, &code);
    return code;
}

void Process::Kill() const {
    constexpr milliseconds kLongestEnd{5000};
    if (Running()) {
        TerminateProcess(handle_, 1);
        WaitForEnd(kLongestEnd);
    }
}

std::size_t Process::PeakWorkingSet() const {
    PROCESS_MEMORY_COUNTERS counters = {};
    counters.cb = sizeof counters;
    GetProcessMemoryInfo(handle_, &counters, sizeof counters);
    return counters.PeakWorkingSetSize;
}

std::vector<DWORD> ProcessesOf(const std::filesystem::path& program) {
    std::array<DWORD, 4096> ids{};
    DWORD size = 0;
    EnumProcesses(ids.data(), sizeof ids, &size);
    std::vector<DWORD> found;
    std::copy_if(ids.begin(), ids.begin() + size / sizeof(DWORD), std::back_inserter(found),
                 [&](DWORD id) { return Runs(id, program); });
    return found;
}

}  // namespace swiftpatch::e2e
