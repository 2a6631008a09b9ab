// What the system shows of the program's file: its icon, and its version block.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "e2e/options.h"
#include "e2e/text.h"
#include "e2e/win32.h"
#include "shared/branding.h"
#include "shared/version.h"

namespace swiftpatch::e2e {
namespace {

constexpr int kIconSizes[] = {16, 20, 24, 32, 40, 48, 64, 96, 128, 256};

std::wstring Program() { return TestOptions().updater.native(); }

/// The bytes of one resource, empty when there is none.
std::string Resource(const wchar_t* type, int number) {
    const HMODULE file = LoadLibraryExW(Program().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    const HRSRC place = FindResourceW(file, MAKEINTRESOURCEW(number), type);
    std::string bytes;
    if (place != nullptr) {
        bytes.assign(static_cast<const char*>(LockResource(LoadResource(file, place))),
                     SizeofResource(file, place));
    }
    FreeLibrary(file);
    return bytes;
}

/// The sizes in a group of icons, by their bits for each point.
std::map<int, std::vector<int>> SizesByDepth(const std::string& group) {
    constexpr std::size_t kHeader = 6;
    constexpr std::size_t kEntry = 14;
    std::map<int, std::vector<int>> sizes;
    for (std::size_t at = kHeader; at + kEntry <= group.size(); at += kEntry) {
        const int size = static_cast<unsigned char>(group[at]);
        const int depth = static_cast<unsigned char>(group[at + 6]);
        std::vector<int>& ofDepth = sizes[depth];
        ofDepth.insert(ofDepth.begin(), size == 0 ? 256 : size);
    }
    return sizes;
}

std::string VersionText(const std::wstring& name) {
    DWORD ignored = 0;
    std::string block(GetFileVersionInfoSizeW(Program().c_str(), &ignored), '\0');
    GetFileVersionInfoW(Program().c_str(), 0, static_cast<DWORD>(block.size()), block.data());
    void* text = nullptr;
    UINT length = 0;
    VerQueryValueW(block.data(), (L"\\StringFileInfo\\040904E4\\" + name).c_str(), &text, &length);
    return text == nullptr ? "" : Utf8(static_cast<const wchar_t*>(text));
}

TEST(ProgramFile, HasItsIconInAllUsualSizes) {
    const auto sizes = SizesByDepth(Resource(RT_GROUP_ICON, 1));
    ASSERT_EQ(sizes.count(32), 1U);
    EXPECT_EQ(sizes.at(32), std::vector<int>(std::begin(kIconSizes), std::end(kIconSizes)));
    // For systems that show no more than 16 colours.
    ASSERT_EQ(sizes.count(4), 1U);
    EXPECT_EQ(sizes.at(4), (std::vector<int>{16, 32}));
}

TEST(ProgramFile, HasAnIconThatTheSystemCanShowInEverySize) {
    for (const int size : kIconSizes) {
        HICON icon = nullptr;
        const UINT count =
            PrivateExtractIconsW(Program().c_str(), 0, size, size, &icon, nullptr, 1, 0);
        EXPECT_EQ(count, 1U) << size;
        EXPECT_NE(icon, nullptr) << size;
        DestroyIcon(icon);
    }
}

TEST(ProgramFile, HasAVersionBlockWithTheMakersTexts) {
    const std::string version = std::to_string(kVersionMajor) + "." +
                                std::to_string(kVersionMinor) + "." +
                                std::to_string(kVersionRevision);
    EXPECT_EQ(VersionText(L"ProductName"), SWIFTPATCH_UPDATER_TITLE);
    EXPECT_EQ(VersionText(L"ProductVersion"), version);
    EXPECT_EQ(VersionText(L"FileVersion"), version);
    EXPECT_EQ(VersionText(L"CompanyName"), SWIFTPATCH_COMPANY);
    EXPECT_EQ(VersionText(L"FileDescription"), SWIFTPATCH_FILE_DESCRIPTION);
    EXPECT_EQ(VersionText(L"LegalCopyright"), SWIFTPATCH_FILE_COPYRIGHT);
    EXPECT_EQ(VersionText(L"OriginalFilename"), "swiftpatch.exe");
}

}  // namespace
}  // namespace swiftpatch::e2e
