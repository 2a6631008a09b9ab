#pragma once

#include <cstddef>
#include <string>

#include "e2e/process.h"

namespace swiftpatch::e2e {

/// What a program holds of the system at a moment. Wine does not count all of it; what it does not
/// count is always 0.
struct Resources {
    DWORD gdi = 0;            ///< Fonts, brushes, pictures and the like.
    DWORD user = 0;           ///< Windows, menus, cursors and the like.
    DWORD handles = 0;        ///< Files, events, threads and the like.
    std::size_t windows = 0;  ///< All windows, the hidden ones and the parts of others too.
    std::size_t threads = 0;  ///< Ours (one) and the system's workers.
    std::size_t files = 0;    ///< Open below Wine, without what each thread holds there.

    std::string Text() const;
};

Resources ResourcesOf(const Process& process);

/// How many programs of this file name run.
int RunningPrograms(const wchar_t* fileName);

}  // namespace swiftpatch::e2e
