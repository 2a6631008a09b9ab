#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace swiftpatch {

/// Numbers of the run-time errors that program code raises or traps. The numbers and their
/// descriptions are those of the classic Basic run-time.
namespace error_number {
inline constexpr std::int32_t kInvalidProcedureCall = 5;
inline constexpr std::int32_t kOverflow = 6;
inline constexpr std::int32_t kSubscriptOutOfRange = 9;
inline constexpr std::int32_t kTypeMismatch = 13;
inline constexpr std::int32_t kBadFileNameOrNumber = 52;
inline constexpr std::int32_t kFileNotFound = 53;
inline constexpr std::int32_t kBadFileMode = 54;
inline constexpr std::int32_t kFileAlreadyOpen = 55;
inline constexpr std::int32_t kDeviceIoError = 57;
inline constexpr std::int32_t kDiskFull = 61;
inline constexpr std::int32_t kInputPastEndOfFile = 62;
inline constexpr std::int32_t kTooManyFiles = 67;
inline constexpr std::int32_t kPermissionDenied = 70;
inline constexpr std::int32_t kDiskNotReady = 71;
inline constexpr std::int32_t kPathFileAccess = 75;
inline constexpr std::int32_t kPathNotFound = 76;
inline constexpr std::int32_t kNoSuchMember = 438;

/// The transfer control's own numbers.
inline constexpr std::int32_t kMalformedUrl = 35752;     ///< The address is not an http address.
inline constexpr std::int32_t kNoConnection = 35754;     ///< The server could not be reached.
inline constexpr std::int32_t kRequestFailed = 35756;    ///< The request ended without an answer.
inline constexpr std::int32_t kRequestTimedOut = 35758;  ///< Timed out, or lost amid the body.
inline constexpr std::int32_t kStillExecuting = 35764;   ///< Execute while executing.
}  // namespace error_number

/// The one kind of error that program code raises and traps.
class RuntimeError : public std::exception {
public:
    /// An error with the description that belongs to its number.
    explicit RuntimeError(std::int32_t number);
    /// `source` names the component that raises the error; empty for the run-time itself.
    RuntimeError(std::int32_t number, std::string description, std::string source = {});

    std::int32_t Number() const { return number_; }
    const std::string& Description() const { return description_; }
    const std::string& Source() const { return source_; }
    const char* what() const noexcept override { return description_.c_str(); }

private:
    std::int32_t number_;
    std::string description_;
    std::string source_;
};

/// Thrown by the runtime when the run has ended while it was pumping messages, and by End().
/// Deliberately no std::exception: program code traps run-time errors only, so nothing of the
/// program runs on after the end.
struct EndProgram {};

/// The text of the system's box for an error that no procedure trapped.
std::string UntrappedErrorText(const RuntimeError& error);

}  // namespace swiftpatch
