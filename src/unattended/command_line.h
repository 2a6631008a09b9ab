#pragma once

#include <string>
#include <vector>

namespace swiftpatch {

/// What a run is to do and to say.
struct CommandLine {
    bool check = false;
    bool closeProgram = false;
    bool goBack = false;
    bool json = false;
    bool quiet = false;
    bool help = false;
    bool version = false;
    std::string fault{};  ///< What is wrong with the arguments; empty for nothing.
};

CommandLine ReadCommandLine(const std::vector<std::string>& arguments);

std::string UsageLine();
std::string HelpText();
std::string VersionText();

}  // namespace swiftpatch
