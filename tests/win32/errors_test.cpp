#include "runtime/win32/errors.h"

#include <gtest/gtest.h>

#include "runtime/runtime_error.h"

namespace swiftpatch::real_system {
namespace {

std::int32_t NumberOf(DWORD systemError, FileAction action) {
    try {
        RaiseFileError(systemError, action);
    } catch (const RuntimeError& error) {
        return error.Number();
    }
}

void ExpectNumbers(DWORD systemError, std::int32_t opening, std::int32_t deleting,
                   std::int32_t copying) {
    EXPECT_EQ(NumberOf(systemError, FileAction::kOpen), opening) << systemError;
    EXPECT_EQ(NumberOf(systemError, FileAction::kDelete), deleting) << systemError;
    EXPECT_EQ(NumberOf(systemError, FileAction::kCopy), copying) << systemError;
}

TEST(FileErrors, OfAHeldFileArePermissionDeniedButForDeleting) {
    for (const DWORD held : {DWORD{ERROR_SHARING_VIOLATION}, DWORD{ERROR_LOCK_VIOLATION},
                             DWORD{ERROR_USER_MAPPED_FILE}}) {
        ExpectNumbers(held, 70, 75, 70);
    }
}

TEST(FileErrors, OfARefusedFileAreOfPathOrAccess) {
    ExpectNumbers(ERROR_ACCESS_DENIED, 75, 75, 70);
    ExpectNumbers(ERROR_WRITE_PROTECT, 75, 75, 70);
}

TEST(FileErrors, OfAVirusScannerArePermissionDenied) {
    for (const DWORD infected : {DWORD{225}, DWORD{226}}) {
        ExpectNumbers(infected, 70, 70, 70);
    }
}

TEST(FileErrors, OfADriveADirectoryOrAQuotaThatIsFullAreDiskFull) {
    for (const DWORD full : {DWORD{ERROR_DISK_FULL}, DWORD{ERROR_HANDLE_DISK_FULL},
                             DWORD{ERROR_CANNOT_MAKE}, DWORD{1295}}) {
        ExpectNumbers(full, 61, 61, 61);
    }
}

TEST(FileErrors, OfAnythingElseAreOfTheDevice) { ExpectNumbers(ERROR_CRC, 57, 57, 57); }

}  // namespace
}  // namespace swiftpatch::real_system
