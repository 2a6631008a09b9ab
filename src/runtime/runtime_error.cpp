#include "runtime/runtime_error.h"

#include <algorithm>
#include <array>
#include <utility>

namespace swiftpatch {
namespace {

struct NumberedText {
    std::int32_t number;
    const char* text;
};

constexpr std::array kDescriptions{
    NumberedText{error_number::kInvalidProcedureCall, "Invalid procedure call or argument"},
    NumberedText{error_number::kOverflow, "Overflow"},
    NumberedText{error_number::kSubscriptOutOfRange, "Subscript out of range"},
    NumberedText{error_number::kTypeMismatch, "Type mismatch"},
    NumberedText{error_number::kBadFileNameOrNumber, "Bad file name or number"},
    NumberedText{error_number::kFileNotFound, "File not found"},
    NumberedText{error_number::kBadFileMode, "Bad file mode"},
    NumberedText{error_number::kFileAlreadyOpen, "File already open"},
    NumberedText{error_number::kDeviceIoError, "Device I/O error"},
    NumberedText{error_number::kDiskFull, "Disk full"},
    NumberedText{error_number::kInputPastEndOfFile, "Input past end of file"},
    NumberedText{error_number::kTooManyFiles, "Too many files"},
    NumberedText{error_number::kPermissionDenied, "Permission denied"},
    NumberedText{error_number::kDiskNotReady, "Disk not ready"},
    NumberedText{error_number::kPathFileAccess, "Path/File access error"},
    NumberedText{error_number::kPathNotFound, "Path not found"},
    NumberedText{error_number::kNoSuchMember, "Object doesn't support this property or method"},
    NumberedText{error_number::kMalformedUrl, "The address is not a valid http address"},
    NumberedText{error_number::kNoConnection, "Unable to connect to the server"},
    NumberedText{error_number::kRequestFailed, "The request failed"},
    NumberedText{error_number::kRequestTimedOut, "Request timed out"},
    NumberedText{error_number::kStillExecuting, "Still executing the last request"},
};

const char* DescriptionOf(std::int32_t number) {
    const auto* found = std::find_if(kDescriptions.begin(), kDescriptions.end(),
                                     [number](const auto& row) { return row.number == number; });
    return found == kDescriptions.end() ? "Application-defined or object-defined error"
                                        : found->text;
}

}  // namespace

RuntimeError::RuntimeError(std::int32_t number) : RuntimeError(number, DescriptionOf(number)) {}

RuntimeError::RuntimeError(std::int32_t number, std::string description, std::string source)
    : number_(number), description_(std::move(description)), source_(std::move(source)) {}

std::string UntrappedErrorText(const RuntimeError& error) {
    return "Run-time error '" + std::to_string(error.Number()) + "':\r\n\r\n" + error.Description();
}

}  // namespace swiftpatch
