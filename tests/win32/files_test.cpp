#include "runtime/files.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "runtime/runtime_error.h"
#include "runtime/win32/flush.h"
#include "win32/files.h"

namespace swiftpatch::real_system {
namespace {

class RealFiles : public testing::Test {
protected:
    std::int32_t ErrorOfOpening() const {
        try {
            OpenForBinary(file, 1);
            CloseFile(1);
            return 0;
        } catch (const RuntimeError& error) {
            return error.Number();
        }
    }

    Workplace place;
    const std::string file = place.Put("build.exe", "");
};

TEST_F(RealFiles, FlushWritesWhatWasGathered) {
    OpenForBinary(file, 1);
    PutBytes(1, "some bytes");
    FlushFile(1);
    EXPECT_EQ(ReadFile(file), "some bytes");
    PutBytes(1, " and more");
    CloseFile(1);
    EXPECT_EQ(ReadFile(file), "some bytes and more");
}

TEST_F(RealFiles, FlushOfAFileThatIsNotOpenIsABadNumber) {
    EXPECT_THROW(FlushFile(9), RuntimeError);
}

TEST_F(RealFiles, OpeningWhatAnotherProcessHoldsIsPermissionDenied) {
    const HeldFile held(file);
    EXPECT_EQ(ErrorOfOpening(), error_number::kPermissionDenied);
}

TEST_F(RealFiles, DeletingWhatAnotherProcessHoldsIsPathFileAccess) {
    const HeldFile held(file);
    try {
        Kill(file);
        ADD_FAILURE() << "deleted";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), error_number::kPathFileAccess);
    }
}

TEST(Flush, ThatADriveDoesNotKnowIsNoFailure) {
    for (const DWORD unknown : {DWORD{ERROR_SUCCESS}, DWORD{ERROR_INVALID_FUNCTION},
                                DWORD{ERROR_NOT_SUPPORTED}, DWORD{ERROR_CALL_NOT_IMPLEMENTED}}) {
        EXPECT_FALSE(IsFailedFlush(unknown)) << unknown;
    }
    for (const DWORD failed : {DWORD{ERROR_DISK_FULL}, DWORD{ERROR_IO_DEVICE},
                               DWORD{ERROR_INVALID_HANDLE}, DWORD{ERROR_WRITE_FAULT}}) {
        EXPECT_TRUE(IsFailedFlush(failed)) << failed;
    }
}

TEST(Flush, OfWhatIsNoFileTellsItsError) { EXPECT_NE(Flush(nullptr), DWORD{ERROR_SUCCESS}); }

}  // namespace
}  // namespace swiftpatch::real_system
