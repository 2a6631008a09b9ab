#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace swiftpatch {

/// The part of a name in a cabinet after its last separator ("\" or "/").
std::string_view BareName(std::string_view nameInCabinet);

/// The part before that separator; empty for a name without folders.
std::string_view FolderPart(std::string_view nameInCabinet);

/// True when `wanted` selects the file: it is empty, or it equals the file's full or bare name
/// without regard to case.
bool IsWanted(std::string_view nameInCabinet, std::string_view wanted);

/// Where a file of a cabinet belongs under the folder `output`. A cabinet may come from anywhere,
/// so there is no place for a name that is absolute, that climbs ("..") or that the system takes
/// for anything but a plain file or folder (drives, devices, streams, wildcards, control
/// characters).
/// Dots and blanks at the end of a folder's or file's name are dropped, as the system does.
std::optional<std::string> PathUnder(std::string_view output, std::string_view nameInCabinet);

}  // namespace swiftpatch
