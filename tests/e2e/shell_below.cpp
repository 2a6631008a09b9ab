#include "e2e/shell_below.h"

#include <algorithm>

#include "e2e/text.h"
#include "e2e/win32.h"

namespace swiftpatch::e2e {
namespace {

constexpr wchar_t kShell[] = L"Z:\\bin\\sh";

}  // namespace

std::string PathBelow(const std::filesystem::path& path) {
    std::string text = PathText(path);
    std::replace(text.begin(), text.end(), '\\', '/');
    return BeginsWith(text, "Z:") ? text.substr(2) : text;
}

void RunBelow(const std::string& script, const std::vector<std::string>& arguments) {
    std::string line = "sh -c \"" + script + "\"";
    for (const std::string& argument : arguments) {
        line += " \"" + argument + "\"";
    }
    std::wstring commandLine = Wide(line);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION made = {};
    if (CreateProcessW(kShell, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &startup, &made) != 0) {
        CloseHandle(made.hThread);
        CloseHandle(made.hProcess);
    }
}

}  // namespace swiftpatch::e2e
