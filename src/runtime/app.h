#pragma once

#include <string>

namespace swiftpatch::App {

/// The folder from which the executable runs, in the system's ANSI code page and without a
/// trailing backslash; its short name where the code page cannot spell it.
std::string Path();

// What the program says of itself (program.h).
std::string Title();
int Major();
int Minor();
int Revision();

/// True when another instance of the program was running when this one started.
bool PrevInstance();

}  // namespace swiftpatch::App
