#pragma once

#include <iosfwd>
#include <string>
#include <vector>

/// A program for the console; each defines its own. Gets the arguments behind its name, in UTF-8 on
/// Windows and as they are elsewhere, and returns the exit status.
int RunTool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& errors);
