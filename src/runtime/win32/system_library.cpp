#include "runtime/win32/system_library.h"

#include <array>
#include <string>

namespace swiftpatch {
namespace {

constexpr DWORD kSearchSystemFolder = 0x00000800;  // LOAD_LIBRARY_SEARCH_SYSTEM32

std::string InSystemFolder(const char* name) {
    std::array<char, MAX_PATH> folder{};
    ::GetSystemDirectoryA(folder.data(), static_cast<UINT>(folder.size()));
    return std::string(folder.data()) + "\\" + name;
}

/// A function of kernel32 that not every system has; null where it is missing.
template <class F>
F FindInKernel(const char* name) {
    const FARPROC found = ::GetProcAddress(::GetModuleHandleA("kernel32.dll"), name);
    return reinterpret_cast<F>(reinterpret_cast<void (*)()>(found));
}

/// Whether the program's manifest leads the bare name to the system's store of libraries, where
/// several versions of one lie side by side (Windows XP).
bool IsInStore(const char* name) {
    using Look = decltype(&::FindActCtxSectionStringA);
    const auto look = FindInKernel<Look>("FindActCtxSectionStringA");
    ACTCTX_SECTION_KEYED_DATA found{};
    found.cbSize = sizeof(found);
    return look != nullptr &&
           look(0, nullptr, ACTIVATION_CONTEXT_SECTION_DLL_REDIRECTION, name, &found);
}

}  // namespace

// Loaded by its path: the system then looks for the library's own libraries beside it, and not
// beside the program.
SystemLibrary::SystemLibrary(const char* name)
    : module_(IsInStore(name) ? ::LoadLibraryA(name)
                              : ::LoadLibraryExA(InSystemFolder(name).c_str(), nullptr,
                                                 LOAD_WITH_ALTERED_SEARCH_PATH)) {}

FARPROC SystemLibrary::Find(const char* function) const {
    return module_ == nullptr ? nullptr : ::GetProcAddress(module_, function);
}

void KeepToSystemLibraries() {
    using SetDirectories = BOOL(WINAPI*)(DWORD);
    if (const auto set = FindInKernel<SetDirectories>("SetDefaultDllDirectories")) {
        set(kSearchSystemFolder);
    }
}

}  // namespace swiftpatch
