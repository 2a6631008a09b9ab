#include "runtime/system.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <optional>
#include <thread>

#include "win32/files.h"

namespace swiftpatch::real_system {
namespace {

/// A file with version information: a library of the system's.
class RealVersion : public testing::Test {
protected:
    RealVersion() {
        std::string folder(MAX_PATH, '\0');
        folder.resize(GetSystemDirectoryA(folder));
        CopyFileA((folder + "\\version.dll").c_str(), file.c_str(), FALSE);
    }

    Workplace place;
    const std::string file = place.PathOf("held.dll");
};

TEST_F(RealVersion, OfAFileThatIsHeldForAMomentIsWaitedFor) {
    ASSERT_GT(GetFileVersionInfoSizeA(file), 0U);
    std::optional<HeldFile> held(file);
    std::thread leaving([&held] {
        Sleep(700);
        held.reset();
    });
    EXPECT_GT(GetFileVersionInfoSizeA(file), 0U);
    leaving.join();
}

TEST_F(RealVersion, OfAFileThatStaysHeldIsGivenUp) {
    const HeldFile held(file);
    const DWORD start = GetTickCount();
    EXPECT_EQ(GetFileVersionInfoSizeA(file), 0U);
    EXPECT_GE(GetTickCount() - start, 1900U);
}

TEST_F(RealVersion, OfAMissingFileIsNotWaitedFor) {
    DeleteFileA(file.c_str());
    const DWORD start = GetTickCount();
    EXPECT_EQ(GetFileVersionInfoSizeA(file), 0U);
    EXPECT_LT(GetTickCount() - start, 1900U);
}

}  // namespace
}  // namespace swiftpatch::real_system
