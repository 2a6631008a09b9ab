#include <cstdlib>

#include "publish/publish_error.h"
#include "publish/system.h"
#include "publish_check/utf8_path.h"
#include "runtime/win32/win32.h"

namespace publish {
namespace {

HANDLE Handle(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

}  // namespace

// A folder cannot be locked, so a file in it is, which goes with its last handle.
FolderLock::FolderLock(const std::filesystem::path& folder)
    : handle_(reinterpret_cast<std::intptr_t>(::CreateFileW((folder / ".publish.lock").c_str(),
                                                            GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                                            FILE_FLAG_DELETE_ON_CLOSE, nullptr))) {
    if (Handle(handle_) == INVALID_HANDLE_VALUE && ::GetLastError() == ERROR_SHARING_VIOLATION) {
        throw PublishError("another publish is at work in this folder");
    }
}

FolderLock::~FolderLock() { ::CloseHandle(Handle(handle_)); }

void FlushFile(const std::filesystem::path& file) {
    const HANDLE handle = ::CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, 0, nullptr);
    const bool flushed = handle != INVALID_HANDLE_VALUE && ::FlushFileBuffers(handle) != FALSE;
    ::CloseHandle(handle);
    if (!flushed) {
        throw PublishError("cannot write " + publish_check::Utf8(file));
    }
}

void FlushFolder(const std::filesystem::path& /*folder*/) {}

void OutliveReaders() {}

// No name of a file has a quote.
std::string Quoted(const std::string& argument) { return "\"" + argument + "\""; }

// The shell takes the outermost quotes away.
int RunInShell(const std::string& command) {
    const std::filesystem::path line = publish_check::PathOf("\"" + command + "\" 1>&2");
    return ::_wsystem(line.c_str());
}

}  // namespace publish
