#include "components/system_error_text.h"

#include <algorithm>
#include <array>

namespace swiftpatch {
namespace {

struct NumberedText {
    std::int32_t number;
    const char* text;
};

constexpr std::array kTexts{
    NumberedText{2, "The system cannot find the file specified."},
    NumberedText{3, "The system cannot find the path specified."},
    NumberedText{4, "The system cannot open the file."},
    NumberedText{5, "Access is denied."},
    NumberedText{8, "Not enough storage is available to process this command."},
    NumberedText{13, "Invalid data."},
    NumberedText{14, "Not enough storage is available to complete this operation."},
    NumberedText{15, "The system cannot find the drive specified."},
    NumberedText{19, "The media is write protected."},
    NumberedText{20, "The system cannot find the device specified."},
    NumberedText{21, "The device is not ready."},
    NumberedText{23, "Data error (cyclic redundancy check)."},
    NumberedText{25, "The drive cannot locate a specific area or track on the disk."},
    NumberedText{26, "The specified disk or diskette cannot be accessed."},
    NumberedText{27, "The drive cannot find the sector requested."},
    NumberedText{29, "The system cannot write to the specified device."},
    NumberedText{30, "The system cannot read from the specified device."},
    NumberedText{31, "A device attached to the system is not functioning."},
    NumberedText{32,
                 "The process cannot access the file because it is being used by another process."},
    NumberedText{33,
                 "The process cannot access the file because another process has locked a portion "
                 "of the file."},
    NumberedText{39, "The disk is full."},
    NumberedText{82, "The directory or file cannot be created."},
    NumberedText{111, "The file name is too long."},
    NumberedText{112, "There is not enough space on the disk."},
    NumberedText{123, "The filename, directory name, or volume label syntax is incorrect."},
};

}  // namespace

std::string SystemErrorText(const std::int32_t& number) {
    const auto* found = std::find_if(kTexts.begin(), kTexts.end(),
                                     [&](const auto& row) { return row.number == number; });
    return found == kTexts.end() ? "Unknown error." : found->text;
}

}  // namespace swiftpatch
