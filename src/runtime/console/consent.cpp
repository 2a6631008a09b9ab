#include "runtime/internal/consent.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "runtime/console/attendance.h"
#include "runtime/win32/consent.h"

namespace swiftpatch {

bool MayRequest(const std::string& url, const std::string& verb) {
    return TheAttendant().MayRequest(url, verb);
}

bool MayDelete(const std::string& path) { return TheAttendant().MayDelete(path); }

/// A terminal shows the path of what runs in it as its title, and in that the name of the folder:
/// it is not taken for a program of this name, least of all the one that this run has itself.
bool MayFind(HWND window) {
    constexpr std::array kTerminals{"ConsoleWindowClass", "CASCADIA_HOSTING_WINDOW_CLASS",
                                    "WineConsoleClass", "tty"};
    std::array<char, 64> name{};
    ::GetClassNameA(window, name.data(), static_cast<int>(name.size()));
    return std::none_of(kTerminals.begin(), kTerminals.end(), [&name](const char* terminal) {
        return std::strcmp(name.data(), terminal) == 0;
    });
}

bool IsThere(const std::string& path, bool found) { return TheAttendant().IsThere(path, found); }

}  // namespace swiftpatch
