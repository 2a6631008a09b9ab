#include "runtime/system.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

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

    /// Writes another length of the version information into the directory of the resources.
    void ClaimSize(std::uint32_t size) const {
        std::fstream stream(file, std::ios::binary | std::ios::in | std::ios::out);
        std::string bytes((std::istreambuf_iterator<char>(stream)), {});
        const std::u16string_view key = u"VS_VERSION_INFO";
        const std::size_t found =
            bytes.find(std::string_view(reinterpret_cast<const char*>(key.data()), 2 * key.size()));
        ASSERT_NE(found, std::string::npos);
        std::uint32_t length = 0;
        std::memcpy(&length, &bytes[found - 6], 2);
        // Such an entry ends with a word that is reserved, and 0.
        for (std::size_t at = 0; at + 12 <= bytes.size(); at += 4) {
            std::array<std::uint32_t, 3> words{};
            std::memcpy(words.data(), &bytes[at], sizeof(words));
            if (words[0] == length && words[2] == 0) {
                stream.clear();
                stream.seekp(static_cast<std::streamoff>(at));
                stream.write(reinterpret_cast<const char*>(&size), sizeof(size));
                return;
            }
        }
        FAIL() << "no entry of " << length << " bytes";
    }

    Workplace place;
    const std::string file = place.PathOf("held.dll");
};

TEST(RealProcessor, HasSse2WhereItSaysSo) {
    EXPECT_EQ(IsProcessorFeaturePresent(PF_XMMI64_INSTRUCTIONS_AVAILABLE),
              __builtin_cpu_supports("sse2") != 0);
}

TEST_F(RealVersion, OfASizeBeyondTheFileCountsAsNone) {
    ClaimSize(0x7FFFFFF0);
    EXPECT_EQ(GetFileVersionInfoSizeA(file), 0U);
}

TEST_F(RealVersion, OfABlockThatLeadsOutOfWhatWasReadIsNone) {
    ClaimSize(44);  // Ends within the fixed block.
    std::vector<std::uint8_t> buffer(GetFileVersionInfoSizeA(file));
    std::span<const std::uint8_t> block;
    if (GetFileVersionInfoA(file, buffer) && VerQueryValueA(buffer, "\\", block)) {
        EXPECT_GE(block.data(), buffer.data());
        EXPECT_LE(block.data() + block.size(), buffer.data() + buffer.size());
    }
}

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
