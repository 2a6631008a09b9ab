#include "components/system_error_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>

namespace swiftpatch {
namespace {

const std::map<std::int32_t, std::string>& Texts() {
    static const std::map<std::int32_t, std::string> texts{
        {2, "The system cannot find the file specified."},
        {3, "The system cannot find the path specified."},
        {4, "The system cannot open the file."},
        {5, "Access is denied."},
        {8, "Not enough storage is available to process this command."},
        {13, "Invalid data."},
        {14, "Not enough storage is available to complete this operation."},
        {15, "The system cannot find the drive specified."},
        {19, "The media is write protected."},
        {20, "The system cannot find the device specified."},
        {21, "The device is not ready."},
        {23, "Data error (cyclic redundancy check)."},
        {25, "The drive cannot locate a specific area or track on the disk."},
        {26, "The specified disk or diskette cannot be accessed."},
        {27, "The drive cannot find the sector requested."},
        {29, "The system cannot write to the specified device."},
        {30, "The system cannot read from the specified device."},
        {31, "A device attached to the system is not functioning."},
        {32, "The process cannot access the file because it is being used by another process."},
        {33,
         "The process cannot access the file because another process has locked a portion of the "
         "file."},
        {39, "The disk is full."},
        {82, "The directory or file cannot be created."},
        {111, "The file name is too long."},
        {112, "There is not enough space on the disk."},
        {123, "The filename, directory name, or volume label syntax is incorrect."}};
    return texts;
}

std::string Expected(std::int32_t number) {
    const auto found = Texts().find(number);
    return found == Texts().end() ? "Unknown error." : found->second;
}

TEST(SystemErrorText, EveryNumberFromMinus10To200HasItsText) {
    for (std::int32_t number = -10; number <= 200; ++number) {
        EXPECT_EQ(SystemErrorText(number), Expected(number)) << number;
    }
}

TEST(SystemErrorText, SuccessAndCommonErrorsOutsideTheTableAreUnknown) {
    for (const std::int32_t number : {0, 1, 6, 18, 80, 87}) {
        EXPECT_EQ(SystemErrorText(number), "Unknown error.") << number;
    }
}

TEST(SystemErrorText, LargestAndSmallestNumbersAreUnknown) {
    EXPECT_EQ(SystemErrorText(std::numeric_limits<std::int32_t>::max()), "Unknown error.");
    EXPECT_EQ(SystemErrorText(std::numeric_limits<std::int32_t>::min()), "Unknown error.");
    EXPECT_EQ(SystemErrorText(static_cast<std::int32_t>(0x80070002U)), "Unknown error.");
}

}  // namespace
}  // namespace swiftpatch
