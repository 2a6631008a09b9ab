#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "e2e/process.h"
#include "e2e/wait.h"

namespace swiftpatch::e2e {

/// The name that the sample main program gives the file in which it records what happens to it.
inline constexpr char kRecordName[] = "started.txt";
/// The file beside it that tells a main program without arguments what to do, for one that records.
inline constexpr char kOrdersName[] = "main_program.ini";
inline constexpr char kOrdersToRecord[] = "[Program]\r\nArguments=--record\r\n";

/// A running sample main program; it does not outlive this object.
class MainProgram {
public:
    /// Starts `program` and waits for its window.
    MainProgram(const std::filesystem::path& program, const std::wstring& arguments);

    /// Takes over the main program that the updater started in `folder`, where it records itself;
    /// throws DriveError when none was started within `limit`.
    MainProgram(const std::filesystem::path& folder, milliseconds limit);

    const Process& Running() const { return process_; }
    HWND Window() const;
    /// Closes its window and waits for its end.
    void Close() const;

private:
    Process process_;
};

/// The lines of a record, the process number left out: "started VERSION PATH", ...; empty when
/// there is no record.
std::vector<std::string> RecordIn(const std::filesystem::path& folder);

}  // namespace swiftpatch::e2e
