#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace swiftpatch {

// The system's functions of the same names.

/// Copies the Windows directory and a NUL into `buffer`, whose length is its capacity. Returns
/// the length without the NUL; 0 when the look-up fails.
std::uint32_t GetWindowsDirectoryA(std::string& buffer);

/// The same for the System directory.
std::uint32_t GetSystemDirectoryA(std::string& buffer);

/// True when both the processor and the system have the ability `feature` (PF_xxx). False also
/// where the system cannot be asked (Windows 95).
bool IsProcessorFeaturePresent(std::uint32_t feature);

/// True when the user has asked the system for colours of high contrast.
bool HighContrast();

/// Size in bytes of a file's version information; 0 when it has none or is missing. Waits up to two
/// seconds for another process that lets nobody read the file. Does not pump.
std::uint32_t GetFileVersionInfoSizeA(const std::string& path);

/// True while another process lets nobody read the file. Does not pump.
bool FileIsHeld(const std::string& path);

/// Reads the version information into `buffer`, sized by its caller. False when that fails.
bool GetFileVersionInfoA(const std::string& path, std::vector<std::uint8_t>& buffer);

/// Finds the block named `block` within version information. False when there is none.
bool VerQueryValueA(const std::vector<std::uint8_t>& buffer, const std::string& block,
                    std::span<const std::uint8_t>& value);

/// Has the shell carry out `verb` on `file` with show command `showCommand` (SW_xxx).
void ShellExecuteA(const std::string& verb, const std::string& file, int showCommand);

/// The system's view of the connection: false for none. `flags` gets the INTERNET_CONNECTION_xxx
/// bits, `name` (its length the capacity) the connection's name and a NUL.
bool InternetGetConnectedStateExA(std::uint32_t& flags, std::string& name);

}  // namespace swiftpatch
