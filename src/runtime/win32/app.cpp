#include "runtime/app.h"

#include <array>

#include "runtime/code_page.h"
#include "runtime/program.h"
#include "runtime/win32/win32.h"

namespace swiftpatch::App {
namespace {

using WidePath = std::array<wchar_t, MAX_PATH>;
using AnsiPath = std::array<char, MAX_PATH>;

/// False where a letter has no equal in the code page; a similar letter would name another file.
/// (The flag and the report are refused by a code page that can spell everything.)
bool ToAnsi(const WidePath& wide, AnsiPath& ansi) {
    BOOL lossy = FALSE;
    const auto size = static_cast<int>(ansi.size());
    if (::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(), -1, ansi.data(), size,
                              nullptr, &lossy) != 0) {
        return lossy == FALSE;
    }
    return ::WideCharToMultiByte(CP_ACP, 0, wide.data(), -1, ansi.data(), size, nullptr, &lossy) !=
               0 &&
           lossy == FALSE;
}

std::string ProgramFile() {
    AnsiPath ansi{};
    WidePath wide{};
    // Windows 95 has the wide function only as a stub that fails.
    const DWORD length = ::GetModuleFileNameW(nullptr, wide.data(), wide.size() - 1);
    if (length != 0 && ToAnsi(wide, ansi)) {
        return ansi.data();
    }
    WidePath shortName{};
    if (length != 0 && ::GetShortPathNameW(wide.data(), shortName.data(), shortName.size()) != 0 &&
        ToAnsi(shortName, ansi)) {
        return ansi.data();
    }
    ::GetModuleFileNameA(nullptr, ansi.data(), ansi.size() - 1);
    return ansi.data();
}

/// The name lives until the process ends, however it ends. It is taken as well where it may not be
/// opened, as that of an instance that was started with more rights.
bool NameTaken(const char* name) {
    ::CreateMutexA(nullptr, FALSE, name);
    const DWORD error = ::GetLastError();
    return error == ERROR_ALREADY_EXISTS || error == ERROR_ACCESS_DENIED;
}

}  // namespace

std::string Path() {
    const std::string file = ProgramFile();
    return file.substr(0, MaskTrailBytes(file).rfind('\\'));
}

std::string Title() { return kProgram.title; }

int Major() { return kProgram.major; }
int Minor() { return kProgram.minor; }
int Revision() { return kProgram.revision; }

bool PrevInstance() {
    static const bool previous = NameTaken(kProgram.instance);
    return previous;
}

}  // namespace swiftpatch::App
