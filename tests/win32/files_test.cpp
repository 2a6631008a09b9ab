#include "runtime/files.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <vector>

#include "runtime/internal/program_head.h"
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

TEST_F(RealFiles, InAFolderAreItsNormalFiles) {
    place.Put("hidden.exe", "");
    ::SetFileAttributesA(place.PathOf("hidden.exe").c_str(), FILE_ATTRIBUTE_HIDDEN);
    place.Put("system.exe", "");
    ::SetFileAttributesA(place.PathOf("system.exe").c_str(), FILE_ATTRIBUTE_SYSTEM);
    MarkReadOnly(place.Put("Read Only.exe", ""), true);
    std::vector<std::string> names = FilesIn(place.PathOf("."));
    std::sort(names.begin(), names.end());
    MarkReadOnly(place.PathOf("Read Only.exe"), false);
    EXPECT_EQ(names, (std::vector<std::string>{"Read Only.exe", "build.exe"}));
}

TEST_F(RealFiles, InAFolderOfThousandsAreAll) {
    for (int number = 0; number < 3000; ++number) {
        place.Put("out\\" + std::to_string(number) + ".exe", "");
    }
    EXPECT_EQ(FilesIn(place.Out()).size(), 3000U);
}

TEST_F(RealFiles, InAFolderWhoseNamesTheCodePageCannotSpellAreLeftOut) {
    const std::filesystem::path folder = place.Out();
    WriteFile(folder / L"tolvex.\u65E5\u672C.exe", "");
    WriteFile(folder / L"tolvex.1.exe", "");
    EXPECT_EQ(FilesIn(place.Out()), std::vector<std::string>{"tolvex.1.exe"});
}

TEST_F(RealFiles, InWhatIsNoFolderAreNone) {
    EXPECT_TRUE(FilesIn(place.PathOf("nowhere")).empty());
    EXPECT_TRUE(FilesIn(file).empty());
    EXPECT_TRUE(FilesIn(std::string(5000, 'x')).empty());
}

TEST_F(RealFiles, ProgramIsWholeUpToItsLastByte) {
    std::array<char, MAX_PATH> own{};
    ::GetModuleFileNameA(nullptr, own.data(), static_cast<DWORD>(own.size()));
    // The symbols at its end are none of a section.
    const std::string program = ReadFile(own.data());
    EXPECT_TRUE(ProgramIsWhole(own.data()));
    EXPECT_TRUE(ProgramIsWhole(place.Put("longer.exe", program + "appended")));
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(program.data());
    const auto whole = static_cast<std::size_t>(LengthOfProgram({bytes, kProgramHead}).value());
    EXPECT_TRUE(ProgramIsWhole(place.Put("whole.exe", program.substr(0, whole))));
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, kProgramHead, whole - 1}) {
        EXPECT_FALSE(ProgramIsWhole(place.Put("cut.exe", program.substr(0, size)))) << size;
    }
}

TEST_F(RealFiles, ProgramThatNobodyCanReadIsNotWhole) {
    EXPECT_FALSE(ProgramIsWhole(place.PathOf("nowhere.exe")));
    EXPECT_FALSE(ProgramIsWhole(place.Out()));
    std::array<char, MAX_PATH> own{};
    ::GetModuleFileNameA(nullptr, own.data(), static_cast<DWORD>(own.size()));
    const std::string copy = place.Put("copy.exe", ReadFile(own.data()));
    const HeldFile held(copy);
    EXPECT_FALSE(ProgramIsWhole(copy));
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
