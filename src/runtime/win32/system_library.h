#pragma once

#include "runtime/win32/win32.h"

namespace swiftpatch {

/// A library of the system's, loaded from the system's own folder, or from its store of libraries
/// where the manifest says so, and never from the program's folder: a file of that name beside the
/// program would otherwise run with its user's rights. Only what the system itself keeps from being
/// replaced (its known libraries, such as kernel32) is imported the ordinary way. Loaded once and
/// kept to the end of the process.
class SystemLibrary {
public:
    /// `name` with its ending: "wininet.dll".
    explicit SystemLibrary(const char* name);

    /// Null when the system has no such library or function; the last error says which.
    FARPROC Find(const char* function) const;

private:
    HMODULE module_;
};

template <class F>
class LateFunction;

/// A function of such a library, called as if it were declared. On a system that lacks it a call
/// fails: it returns 0 and the last error is ERROR_PROC_NOT_FOUND.
template <class R, class... Arguments>
class LateFunction<R(WINAPI*)(Arguments...)> {
public:
    LateFunction(const SystemLibrary& library, const char* name)
        : function_(reinterpret_cast<Function>(reinterpret_cast<void (*)()>(library.Find(name)))) {}

    /// Whether the system has it.
    explicit operator bool() const { return function_ != nullptr; }

    R operator()(Arguments... arguments) const {
        if (function_ == nullptr) {
            ::SetLastError(ERROR_PROC_NOT_FOUND);
            return R{};
        }
        return function_(arguments...);
    }

private:
    using Function = R(WINAPI*)(Arguments...);
    Function function_;
};

/// To be called before anything else: the libraries that the system's own libraries load come from
/// the system's folder too, where the system can be told so (Windows 8, and 7 with its updates).
void KeepToSystemLibraries();

}  // namespace swiftpatch
