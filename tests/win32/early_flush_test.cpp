#include "runtime/win32/early_flush.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace swiftpatch::real_system {
namespace {

constexpr DWORD kPiece = EarlyFlush::kPiece;

/// The error after these writes to what is no file, so that each flush of it fails.
DWORD ErrorAfter(std::initializer_list<DWORD> writes, DWORD milliseconds) {
    EarlyFlush flush(UniqueFile(CreateEventA(nullptr, FALSE, FALSE, nullptr)));
    for (const DWORD bytes : writes) {
        flush.Wrote(bytes);
    }
    Sleep(milliseconds);
    return flush.Finish();
}

/// The end may overtake the flush; so it is tried with more and more time.
bool Flushes(std::initializer_list<DWORD> writes) {
    for (DWORD milliseconds = 20; milliseconds < 10'000; milliseconds *= 2) {
        if (ErrorAfter(writes, milliseconds) != ERROR_SUCCESS) {
            return true;
        }
    }
    return false;
}

TEST(EarlyFlush, TellsTheErrorOfAPiece) { EXPECT_TRUE(Flushes({kPiece})); }

TEST(EarlyFlush, CountsWritesTogether) { EXPECT_TRUE(Flushes({kPiece / 2, kPiece / 2})); }

TEST(EarlyFlush, OfLessThanAPieceDoesNothing) {
    EXPECT_EQ(ErrorAfter({kPiece - 1}, 50), DWORD{ERROR_SUCCESS});
}

TEST(EarlyFlush, WithoutAFileDoesNothing) {
    EarlyFlush flush{UniqueFile()};
    flush.Wrote(kPiece);
    Sleep(50);
    EXPECT_EQ(flush.Finish(), DWORD{ERROR_SUCCESS});
}

}  // namespace
}  // namespace swiftpatch::real_system
