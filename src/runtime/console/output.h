#pragma once

#include <string>
#include <string_view>

namespace swiftpatch {

// The standard output of a console program. Texts are in the system's ANSI code page. What cannot
// be written is lost: nobody may be there to read it.

void WriteOutput(std::string_view text);
void WriteErrors(std::string_view text);

/// True when a person can see the output come.
bool OutputIsTerminal();

/// A text of the code page as UTF-16.
std::u16string ToUtf16(std::string_view text);

}  // namespace swiftpatch
